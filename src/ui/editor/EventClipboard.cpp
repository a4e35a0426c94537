#include "editor/EventClipboard.h"

#include <algorithm>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

namespace {

const model::EditorVariable* byName(const model::TaskDocument& task, const QString& name) {
    const auto found =
        std::find_if(task.definitions.begin(), task.definitions.end(),
                     [&](const auto& definition) { return definition->name == name; });
    return found == task.definitions.end() ? nullptr : found->get();
}

QString freeName(const model::TaskDocument& task, const QString& name) {
    for (int n = 1;; ++n) {
        QString candidate = QStringLiteral("%1(%2)").arg(name).arg(n);
        if (!byName(task, candidate)) {
            return candidate;
        }
    }
}

bool anyUses(const std::vector<model::EditorEvent>& events, int id) {
    return std::any_of(events.begin(), events.end(),
                       [&](const auto& event) { return event.uses(model::Ref::Definition, id); });
}

void replaceDefinition(std::vector<model::EditorEvent>& events, int from, int to) {
    for (model::EditorEvent& event : events) {
        event.conditions.replace(model::Ref::Definition, from, to);
        for (auto& action : event.actions) {
            action->replace(model::Ref::Definition, from, to);
        }
    }
}

}  // namespace

QByteArray eventsToTaskJson(const model::TaskDocument& from,
                            const std::vector<const model::EditorEvent*>& events) {
    model::TaskDocument carrier;
    for (const model::EditorEvent* event : events) {
        carrier.defaultScene.events.push_back(*event);
    }
    for (const auto& definition : from.definitions) {
        if (anyUses(carrier.defaultScene.events, definition->id)) {
            carrier.definitions.push_back(definition->clone());
        }
    }
    return carrier.serialise();
}

PastedEvents eventsFromTaskJson(const QByteArray& json, const model::TaskDocument& into,
                                int firstEventId) {
    PastedEvents pasted;
    model::TaskDocument carrier;
    const model::OpenResult opened = carrier.openText(json);
    if (!opened) {
        pasted.error = TaskEditor::tr("剪贴板中不是任务: %1").arg(opened.error);
        return pasted;
    }
    model::TaskDocument::forEachScene(carrier, [&](model::EditorScene& scene) {
        for (model::EditorEvent& event : scene.events) {
            pasted.events.push_back(std::move(event));
        }
    });
    if (pasted.events.empty()) {
        pasted.error = TaskEditor::tr("剪贴板中没有事件");
        return pasted;
    }
    for (size_t i = 0; i < pasted.events.size(); ++i) {
        pasted.events[i].id = firstEventId + int(i);
    }
    // Through negative ids first, so that no new id is taken for an old one still to move.
    std::vector<std::pair<int, int>> moves;
    for (const auto& definition : carrier.definitions) {
        if (definition->id <= 0 || !anyUses(pasted.events, definition->id)) {
            continue;
        }
        replaceDefinition(pasted.events, definition->id, -definition->id);
        const model::EditorVariable* same = byName(into, definition->name);
        if (same && same->type() == definition->type()) {
            moves.emplace_back(-definition->id, same->id);
            continue;
        }
        auto added = definition->clone();
        if (into.definition(added->id)) {
            added->id = model::definition_ids::next();
        }
        if (same) {
            added->name = freeName(into, added->name);
        }
        moves.emplace_back(-definition->id, added->id);
        pasted.definitions.push_back(std::move(added));
    }
    for (const auto& [from, to] : moves) {
        replaceDefinition(pasted.events, from, to);
    }
    return pasted;
}

}  // namespace autoscene::ui

#include "editor/EventClipboard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "editor/TaskEditor.h"
#include "model/TaskImages.h"

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

bool anyUses(const std::vector<model::EditorEvent>& events, int id,
             model::Ref kind = model::Ref::Definition) {
    return std::any_of(events.begin(), events.end(),
                       [&](const auto& event) { return event.uses(kind, id); });
}

void replaceRef(std::vector<model::EditorEvent>& events, model::Ref kind, int from, int to) {
    for (model::EditorEvent& event : events) {
        event.conditions.replace(kind, from, to);
        for (auto& action : event.actions) {
            action->replace(kind, from, to);
        }
    }
}

// Renumbers the references of one kind; through negative ids first, so that no new id is
// taken for an old one still to move.
void renumber(std::vector<model::EditorEvent>& events, model::Ref kind,
              const std::vector<std::pair<int, int>>& moves) {
    for (const auto& [from, to] : moves) {
        replaceRef(events, kind, from, -from);
    }
    for (const auto& [from, to] : moves) {
        replaceRef(events, kind, -from, to);
    }
}

// An id no record has and no item of the target refers to (a dangling reference would
// otherwise take the pasted record).
template <class Record>
int freeId(const model::TaskDocument& into, const std::vector<Record>& existing, model::Ref kind,
           const std::vector<int>& taken, int wanted) {
    const auto used = [&](int id) {
        return std::any_of(existing.begin(), existing.end(),
                           [id](const Record& r) { return r.id == id; }) ||
               std::find(taken.begin(), taken.end(), id) != taken.end() ||
               !into.usersOf(kind, id).empty();
    };
    int id = wanted > 0 ? wanted : 1;
    while (used(id)) {
        ++id;
    }
    return id;
}

template <class Record>
const Record* byRecordName(const std::vector<Record>& list, const QString& name) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const Record& r) { return r.name == name; });
    return found == list.end() ? nullptr : &*found;
}

// A file name the target's image folder and records do not use yet.
QString freeFileName(const model::TaskDocument& into, const std::vector<PastedImage>& added,
                     const QString& file) {
    const QDir folder(model::imageFolder(into));
    const auto taken = [&](const QString& name) {
        return folder.exists(name) ||
               std::any_of(into.images.begin(), into.images.end(),
                           [&](const auto& i) { return i.file == name; }) ||
               std::any_of(added.begin(), added.end(),
                           [&](const auto& i) { return i.record.file == name; });
    };
    const QFileInfo info(file);
    QString candidate = file;
    for (int n = 1; taken(candidate); ++n) {
        candidate =
            QStringLiteral("%1_%2.%3").arg(info.completeBaseName()).arg(n).arg(info.suffix());
    }
    return candidate;
}

// Images and colours the events use: the target's of the same name, or added.
QString takeResources(model::TaskDocument& carrier, const model::TaskDocument& into,
                      PastedEvents& pasted) {
    std::vector<std::pair<int, int>> moves;
    std::vector<int> taken;
    for (const model::ImageRecord& image : carrier.images) {
        if (image.id <= 0 || !anyUses(pasted.events, image.id, model::Ref::Image)) {
            continue;
        }
        if (const model::ImageRecord* same = byRecordName(into.images, image.name)) {
            moves.emplace_back(image.id, same->id);
            continue;
        }
        if (!model::isPlainFileName(image.file)) {
            return TaskEditor::tr("图片 %1 的文件名无效: %2").arg(image.name, image.file);
        }
        PastedImage added{image, image.file};
        added.record.id = freeId(into, into.images, model::Ref::Image, taken, image.id);
        added.record.file = freeFileName(into, pasted.images, image.file);
        taken.push_back(added.record.id);
        moves.emplace_back(image.id, added.record.id);
        pasted.images.push_back(std::move(added));
    }
    renumber(pasted.events, model::Ref::Image, moves);
    moves.clear();
    taken.clear();
    for (const model::ColorRecord& color : carrier.colors) {
        if (color.id <= 0 || !anyUses(pasted.events, color.id, model::Ref::Color)) {
            continue;
        }
        if (const model::ColorRecord* same = byRecordName(into.colors, color.name)) {
            moves.emplace_back(color.id, same->id);
            continue;
        }
        model::ColorRecord added = color;
        added.id = freeId(into, into.colors, model::Ref::Color, taken, color.id);
        taken.push_back(added.id);
        moves.emplace_back(color.id, added.id);
        pasted.colors.push_back(std::move(added));
    }
    renumber(pasted.events, model::Ref::Color, moves);
    return {};
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
    for (const model::ImageRecord& image : from.images) {
        if (image.id > 0 && anyUses(carrier.defaultScene.events, image.id, model::Ref::Image)) {
            carrier.images.push_back(image);
        }
    }
    for (const model::ColorRecord& color : from.colors) {
        if (color.id > 0 && anyUses(carrier.defaultScene.events, color.id, model::Ref::Color)) {
            carrier.colors.push_back(color);
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
    std::vector<std::pair<int, int>> moves;
    for (const auto& definition : carrier.definitions) {
        if (definition->id <= 0 || !anyUses(pasted.events, definition->id)) {
            continue;
        }
        const model::EditorVariable* same = byName(into, definition->name);
        if (same && same->type() == definition->type()) {
            moves.emplace_back(definition->id, same->id);
            continue;
        }
        auto added = definition->clone();
        if (into.definition(added->id)) {
            added->id = model::definition_ids::next();
        }
        if (same) {
            added->name = freeName(into, added->name);
        }
        moves.emplace_back(definition->id, added->id);
        pasted.definitions.push_back(std::move(added));
    }
    renumber(pasted.events, model::Ref::Definition, moves);
    pasted.error = takeResources(carrier, into, pasted);
    return pasted;
}

QString copyImageFiles(const PastedEvents& pasted, const QString& sourceFolder,
                       const model::TaskDocument& into) {
    const QDir target(model::imageFolder(into));
    for (const PastedImage& image : pasted.images) {
        const QString source =
            QDir(sourceFolder).filePath(QStringLiteral("image/") + image.sourceFile);
        if (sourceFolder.isEmpty() || !QFileInfo::exists(source)) {
            return TaskEditor::tr("图片 %1 的文件 %2 无处可取")
                .arg(image.record.name, image.sourceFile);
        }
    }
    for (const PastedImage& image : pasted.images) {
        const QString source =
            QDir(sourceFolder).filePath(QStringLiteral("image/") + image.sourceFile);
        if (!target.mkpath(QStringLiteral(".")) ||
            !QFile::copy(source, target.filePath(image.record.file))) {
            return TaskEditor::tr("图片 %1 不能复制到 %2").arg(image.record.name, target.path());
        }
    }
    return {};
}

}  // namespace autoscene::ui

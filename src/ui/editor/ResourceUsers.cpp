#include "editor/ResourceUsers.h"

#include "model/TaskDocument.h"

namespace autoscene::ui {

namespace {

void collect(const model::TaskDocument& task, const model::EditorGroupCondition& group,
             model::Ref kind, int id, const QString& where, QStringList& lines) {
    for (const auto& member : group.items()) {
        if (member->type() == model::EditorGroupCondition::kType) {
            collect(task, static_cast<const model::EditorGroupCondition&>(*member), kind, id, where,
                    lines);
        } else if (member->uses(kind, id)) {
            lines << where + member->describe(task);
        }
    }
}

}  // namespace

QStringList describeUsers(const model::TaskDocument& task, model::Ref kind, int id) {
    QStringList lines;
    for (const auto& definition : task.definitions) {
        if (definition->uses(kind, id)) {
            lines << definition->name;
        }
    }
    model::TaskDocument::forEachScene(task, [&](const model::EditorScene& scene) {
        for (const model::EditorEvent* event : scene.allEvents()) {
            const QString where = QStringLiteral("%1 / %2: ").arg(scene.name, event->name);
            collect(task, event->conditions, kind, id, where, lines);
            for (const auto& action : event->actions) {
                if (action->uses(kind, id)) {
                    lines << where + action->describe(task);
                }
            }
        }
    });
    return lines;
}

}  // namespace autoscene::ui

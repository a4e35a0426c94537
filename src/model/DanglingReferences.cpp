#include "model/DanglingReferences.h"

#include <algorithm>

#include "model/EditorConditions.h"
#include "model/EditorScene.h"

namespace autoscene::model {

namespace {

QString kindName(Ref kind) {
    switch (kind) {
        case Ref::Definition:
            return QStringLiteral("definition");
        case Ref::Image:
            return QStringLiteral("image");
        case Ref::Color:
            return QStringLiteral("colour");
        case Ref::Original:
            return QStringLiteral("original image");
        default:
            return {};
    }
}

bool exists(const TaskDocument& task, Ref kind, int id) {
    switch (kind) {
        case Ref::Definition:
            return task.definition(id) != nullptr;
        case Ref::Image:
            return task.image(id) != nullptr;
        case Ref::Color:
            return task.color(id) != nullptr;
        case Ref::Original:
            return std::any_of(task.originals.begin(), task.originals.end(),
                               [id](const OriginalImageRecord& o) { return o.id == id; });
        default:
            return true;  // labels are classes of the model, checked when it loads
    }
}

class Finder {
public:
    explicit Finder(const TaskDocument& task) : task_(task) {}

    void check(const QString& place, const IResourceUseage& holder) {
        holder.forEachReference([&](Ref kind, int id) {
            if (id > 0 && !exists(task_, kind, id)) {
                missing(place, kind, id);
            }
        });
    }

    void missing(const QString& place, Ref kind, int id) {
        lines_ << QStringLiteral("%1: %2 %3 does not exist").arg(place, kindName(kind)).arg(id);
    }

    void checkGroup(const QString& place, const EditorGroupCondition& group) {
        for (const auto& item : group.items()) {
            if (item->type() == EditorGroupCondition::kType) {
                checkGroup(place, static_cast<const EditorGroupCondition&>(*item));
            } else {
                check(place, *item);
            }
        }
    }

    QStringList lines() const { return lines_; }

private:
    const TaskDocument& task_;
    QStringList lines_;
};

}  // namespace

QStringList danglingReferences(const TaskDocument& task) {
    Finder finder(task);
    for (const auto& definition : task.definitions) {
        finder.check(QStringLiteral("definition \"%1\"").arg(definition->name), *definition);
    }
    for (const ImageRecord& image : task.images) {
        if (image.ori > 0 && !exists(task, Ref::Original, image.ori)) {
            finder.missing(QStringLiteral("image %1").arg(image.id), Ref::Original, image.ori);
        }
    }
    TaskDocument::forEachScene(task, [&](const EditorScene& scene) {
        for (const EditorEvent* event : scene.allEvents()) {
            const QString place =
                QStringLiteral("scene \"%1\", event \"%2\"").arg(scene.name, event->name);
            finder.checkGroup(place, event->conditions);
            for (const auto& action : event->actions) {
                finder.check(place, *action);
            }
        }
    });
    return finder.lines();
}

}  // namespace autoscene::model

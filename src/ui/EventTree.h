#pragma once
// The events of the selected scene, each with its conditions and actions described in
// words underneath. Double-clicking opens nothing yet: the event editor plugs in there.

#include <QTreeWidget>

namespace autoscene::model {
class EditorScene;
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class EventTree : public QTreeWidget {
    Q_OBJECT
public:
    explicit EventTree(QWidget* parent = nullptr);

    // Shows the events of `scene`; none for a null scene.
    void showScene(const model::EditorScene* scene, const model::TaskDocument& task);
};

}  // namespace autoscene::ui

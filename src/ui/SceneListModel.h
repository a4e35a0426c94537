#pragma once
// The scene list over the open task: the three fixed scenes first, then the task's own.

#include <QAbstractListModel>

namespace autoscene::ui {

class TaskEditor;

class SceneListModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit SceneListModel(TaskEditor& editor, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    TaskEditor& editor_;
};

}  // namespace autoscene::ui

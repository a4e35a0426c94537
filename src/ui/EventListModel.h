#pragma once
// The events of one scene as a flat list: each event's row followed by a row per condition
// and action, described in words. Texts are made when the view asks for them, so a scene of
// ten thousand events costs only the rows in view, and a changed event replaces its own rows.
// (A two-level model would need the view to expand every event, which keeps a persistent
// index per event and costs more than the rest of the list together.)

#include <QAbstractListModel>
#include <vector>

namespace autoscene::ui {

class TaskEditor;

class EventListModel : public QAbstractListModel {
    Q_OBJECT
public:
    // True for the rows of conditions and actions, which the view indents.
    static constexpr int kItemLineRole = Qt::UserRole + 1;

    explicit EventListModel(TaskEditor& editor, QObject* parent = nullptr);

    // The scene at `sceneRow` of the scene list; none for a row outside.
    void showScene(int sceneRow);
    int sceneRow() const { return sceneRow_; }
    // The event of a row, whether it is the event's or one of its lines; -1 for none.
    int eventOf(const QModelIndex& index) const;
    // The row that shows the event itself; invalid outside the list.
    QModelIndex rowOf(int event) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    void reload();
    void eventChanged(int sceneRow, int eventRow);

    TaskEditor& editor_;
    int sceneRow_ = -1;
    // The first row of each event, then the number of rows: an event's lines lie between
    // its first row and the next event's.
    std::vector<int> firstRows_{0};
};

}  // namespace autoscene::ui

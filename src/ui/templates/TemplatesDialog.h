#pragma once
// The task's template images: each with its use count and users, its pixels, and whether it
// also matches elsewhere on an original. Rename, replace the pixels by the same rectangle of
// another original (the id stays, so every item keeps pointing at it) and delete when
// nothing uses it; each is one undoable step.

#include <QDialog>
#include <vector>

#include "probe/ProbeResult.h"
#include "screen/LatestAnswer.h"

class QComboBox;
class QLabel;
class QListWidget;
class QTreeWidget;

namespace autoscene::ui {

class TaskEditor;

class TemplatesDialog : public QDialog {
    Q_OBJECT
public:
    explicit TemplatesDialog(TaskEditor& editor, QWidget* parent = nullptr);

    QTreeWidget& list() { return *list_; }
    QComboBox& originals() { return *originals_; }
    QLabel& hint() { return *hint_; }
    // The id of the selected image; 0 for none.
    int selectedId() const;
    void select(int id);

    // Each acts on the selected image and says why it could not.
    bool renameSelected(const QString& name);
    bool replaceSelected();
    bool removeSelected();

private:
    void refresh();
    void showSelected();
    void askRename();
    void refuse(const QString& why);
    void showOtherMatches(const std::vector<probe::ProbeCandidate>& others);

    TaskEditor& editor_;
    QTreeWidget* list_;
    QComboBox* originals_;
    QLabel* preview_;
    QListWidget* users_;
    QLabel* hint_;
    // The search for the selected image elsewhere on the chosen original.
    LatestAnswer<std::vector<probe::ProbeCandidate>> uniqueness_{this};
};

}  // namespace autoscene::ui

#pragma once
// The task's label model: choose its files (darknet configuration, weights and class
// names), which are copied into the task's model folder under the weights' name, and test a
// label on an original with the boxes drawn.

#include <QDialog>

#include "recognition/LabelDetector.h"

class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace autoscene::ui {

class ProbeFrameView;
class TaskEditor;

class ModelsDialog : public QDialog {
    Q_OBJECT
public:
    explicit ModelsDialog(TaskEditor& editor, QWidget* parent = nullptr);

    // Copies the files and makes them the task's model (saved with the task); the error,
    // empty when done. Existing files of that name are kept only when they are the same.
    QString useModel(const recognition::LabelModelFiles& chosen);
    // The chosen label on the chosen original, drawn.
    void test();

    QComboBox& labels() { return *labels_; }
    QComboBox& originals() { return *originals_; }
    QLabel& verdict() { return *verdict_; }
    ProbeFrameView& view() { return *view_; }

private:
    void chooseFiles();
    void showModel();

    TaskEditor& editor_;
    QLabel* model_;
    QComboBox* labels_;
    QDoubleSpinBox* probability_;
    QComboBox* originals_;
    ProbeFrameView* view_;
    QLabel* verdict_;
};

}  // namespace autoscene::ui

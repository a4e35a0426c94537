#pragma once
// The task's window record, shown and edited as text: which top-level window the task
// drives, the child that takes its input, and the size it is given when a run starts.

#include <QDialog>

#include "model/TaskSettings.h"

class QCheckBox;
class QLineEdit;
class QSpinBox;

namespace autoscene::ui {

class WindowInfoDialog : public QDialog {
    Q_OBJECT
public:
    explicit WindowInfoDialog(const model::WindowInfo& info, QWidget* parent = nullptr);

    model::WindowInfo info() const;

    // Refuses a record that names no window.
    void accept() override;

private:
    QLineEdit* title_ = nullptr;
    QCheckBox* fullMatch_ = nullptr;
    QLineEdit* className_ = nullptr;
    QLineEdit* childTitle_ = nullptr;
    QLineEdit* childClassName_ = nullptr;
    QCheckBox* modifySize_ = nullptr;
    QSpinBox* width_ = nullptr;
    QSpinBox* height_ = nullptr;
};

}  // namespace autoscene::ui

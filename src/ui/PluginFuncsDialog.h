#pragma once
// Which services of the task's background plug-in stand in for the program's own, or the
// plug-in's removal from the task.

#include <QDialog>

#include "plugins/BackgroundPlugin.h"

class QCheckBox;

namespace autoscene::ui {

class PluginFuncsDialog : public QDialog {
    Q_OBJECT
public:
    // exec() returns this when the user removes the plug-in.
    static constexpr int kRemoved = 2;

    explicit PluginFuncsDialog(const plugins::BackgroundServices& services,
                               QWidget* parent = nullptr);

    plugins::BackgroundServices services() const;

private:
    QCheckBox* capture_ = nullptr;
    QCheckBox* mouse_ = nullptr;
    QCheckBox* key_ = nullptr;
    QCheckBox* input_ = nullptr;
    QCheckBox* wheel_ = nullptr;
};

}  // namespace autoscene::ui

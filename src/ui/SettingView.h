#pragma once
// The task's run settings (search margin, several-window strategy, speed, background
// capture and input) and the user's hot keys. Accepting writes them back: the settings
// into the task, the keys into config.ini.

#include <QDialog>

#include "model/TaskSettings.h"
#include "ui/AppConfig.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QSlider;

namespace autoscene::ui {

class HotKeyEdit;

class SettingView : public QDialog {
    Q_OBJECT
public:
    SettingView(const model::TaskSettings& settings, AppConfig config, QWidget* parent = nullptr);

    // The settings as the dialog shows them.
    void applyTo(model::TaskSettings& settings) const;
    // Writes the hot keys into config.ini.
    void saveHotKeys();

    // Loop intervals of the speed slider's steps, fastest first.
    static constexpr int kIntervalsMs[] = {50, 200, 500, 1000};

private:
    AppConfig config_;
    QLineEdit* expandSize_ = nullptr;
    QRadioButton* concurrency_ = nullptr;
    QRadioButton* queue_ = nullptr;
    QSlider* speed_ = nullptr;
    int initialSpeedStep_ = 0;
    QCheckBox* backCapture_ = nullptr;
    QCheckBox* backInput_ = nullptr;
    HotKeyEdit* captureKey_ = nullptr;
    HotKeyEdit* startKey_ = nullptr;
    HotKeyEdit* stopKey_ = nullptr;
};

}  // namespace autoscene::ui

#pragma once
// The task's run settings (search margin, several-window strategy, speed, background
// capture and input, the background plug-in) and the user's hot keys. Accepting writes them
// back: the settings into the task, the keys into config.ini.

#include <QDialog>

#include "editor/SettingsCommand.h"
#include "model/TaskDocument.h"
#include "plugins/BackgroundPlugin.h"
#include "ui/AppConfig.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;

namespace autoscene::ui {

class HotKeyEdit;

class SettingView : public QDialog {
    Q_OBJECT
public:
    SettingView(const model::TaskDocument& task, AppConfig config, QWidget* parent = nullptr);

    // The settings as the dialog shows them.
    void applyTo(TaskSetup& setup) const;
    // Takes the library as the task's background plug-in, every service ticked, when it
    // loads; otherwise says so and keeps the previous one.
    bool choosePlugin(const QString& path);
    // Writes the hot keys into config.ini.
    void saveHotKeys();

    // Loop intervals of the speed slider's steps, fastest first.
    static constexpr int kIntervalsMs[] = {50, 200, 500, 1000};

private:
    void browsePlugin();
    void editPluginServices();
    void showPlugin();

    AppConfig config_;
    QString taskFolder_;
    QString pluginFile_;
    plugins::BackgroundServices pluginServices_;
    QLineEdit* pluginField_ = nullptr;
    QPushButton* pluginServicesButton_ = nullptr;
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

#pragma once
// A window's global hot keys (the main window's screenshot, start and stop; the task page's
// start and stop): read from config.ini, registered with the desktop, and their presses
// turned into signals on the window's thread. They stay registered while the registrar
// lives. One registrar at a time per desktop: each takes every press the desktop reports.

#include <QObject>

#include "desktop/GlobalHotKeys.h"
#include "ui/AppConfig.h"

class QSocketNotifier;
class QWidget;

namespace autoscene::ui {

class HotKeyRegistrar : public QObject {
    Q_OBJECT
public:
    enum class Scope { MainWindow, TaskPage };

    // Boxes open over `window`.
    HotKeyRegistrar(platform::IGlobalHotKeys& keys, AppConfig config, QWidget* window,
                    Scope scope = Scope::MainWindow);
    ~HotKeyRegistrar() override;

    // Reads the three keys again and registers them in place of the old ones; a box names
    // each that failed, and the others work all the same.
    void registerAll();

signals:
    void captureRequested();
    void startRequested();
    void stopRequested();

private:
    // The task page's keys are registrations of their own, apart from the main window's.
    enum Id : int { kCapture = 1, kStart, kStop, kPageStart = 11, kPageStop };

    void pressed(int id);

    platform::IGlobalHotKeys& keys_;
    AppConfig config_;
    QWidget* window_;
    Scope scope_;
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace autoscene::ui

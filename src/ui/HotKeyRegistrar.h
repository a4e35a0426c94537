#pragma once
// The main window's global hot keys (screenshot, start, stop): read from config.ini,
// registered with the desktop, and their presses turned into signals on the window's
// thread. They stay registered while the registrar lives.

#include <QObject>

#include "desktop/GlobalHotKeys.h"
#include "ui/AppConfig.h"

class QSocketNotifier;
class QWidget;

namespace autoscene::ui {

class HotKeyRegistrar : public QObject {
    Q_OBJECT
public:
    // Boxes open over `window`.
    HotKeyRegistrar(platform::IGlobalHotKeys& keys, AppConfig config, QWidget* window);
    ~HotKeyRegistrar() override;

    // Reads the three keys again and registers them in place of the old ones; a box names
    // each that failed, and the others work all the same.
    void registerAll();

signals:
    void captureRequested();
    void startRequested();
    void stopRequested();

private:
    enum Id : int { kCapture = 1, kStart, kStop };

    void pressed(int id);

    platform::IGlobalHotKeys& keys_;
    AppConfig config_;
    QWidget* window_;
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace autoscene::ui

#pragma once
// Lists the desktop's top-level windows for the user to pick the task's target from, or to
// point at with the crosshair.

#include <QDialog>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "desktop/WindowPicker.h"

class QListWidget;
class QPushButton;
class QTimer;

namespace autoscene::ui {

class WindowListDialog : public QDialog {
    Q_OBJECT
public:
    // Without a picker only the list is offered.
    WindowListDialog(platform::IDesktopBackend& backend, platform::IWindowPicker* picker,
                     QWidget* parent = nullptr);
    ~WindowListDialog() override;

    // The window picked; nothing when the list was empty or none is selected.
    std::optional<platform::WindowInfo> chosen() const;

private:
    // False when the window is gone.
    bool addWindow(platform::WindowHandle window);
    void beginPick();
    void pollPick();

    QListWidget* list_ = nullptr;
    QPushButton* pickButton_ = nullptr;
    QTimer* pickPoll_ = nullptr;
    platform::IDesktopBackend& backend_;
    platform::IWindowPicker* picker_ = nullptr;
    std::vector<platform::WindowInfo> windows_;
};

}  // namespace autoscene::ui

#pragma once
// Lists the desktop's top-level windows for the user to pick the task's target from.

#include <QDialog>
#include <vector>

#include "desktop/DesktopBackend.h"

class QListWidget;

namespace autoscene::ui {

class WindowListDialog : public QDialog {
    Q_OBJECT
public:
    WindowListDialog(platform::IDesktopBackend& backend, QWidget* parent = nullptr);

    // The window picked; nothing when the list was empty or none is selected.
    std::optional<platform::WindowInfo> chosen() const;

private:
    QListWidget* list_ = nullptr;
    std::vector<platform::WindowInfo> windows_;
};

}  // namespace autoscene::ui

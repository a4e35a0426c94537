#pragma once
// The ADB devices for the task to run on: each ready device can be ticked; the run drives
// the ticked ones at once.

#include <QDialog>
#include <QStringList>

#include "android/AdbClient.h"

class QListWidget;

namespace autoscene::ui {

class DeviceListDialog : public QDialog {
    Q_OBJECT
public:
    // `ticked`: the serials ticked last time; every ready device when empty.
    DeviceListDialog(platform::android::AdbClient adb, QStringList ticked,
                     QWidget* parent = nullptr);

    // Asks adb again; false when adb could not answer (the user was told).
    bool refresh();
    QStringList chosen() const;

private:
    platform::android::AdbClient adb_;
    QStringList previous_;
    QListWidget* list_ = nullptr;
};

}  // namespace autoscene::ui

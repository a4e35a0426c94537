#include "ui/DeviceListDialog.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "ui/AdbDevices.h"

namespace autoscene::ui {

DeviceListDialog::DeviceListDialog(platform::android::AdbClient adb, QStringList ticked,
                                   QWidget* parent)
    : QDialog(parent), adb_(std::move(adb)), previous_(std::move(ticked)) {
    setObjectName(QStringLiteral("DeviceListDialog"));
    setWindowTitle(tr("ADB设备"));
    list_ = new QListWidget;
    list_->setObjectName(QStringLiteral("listWidget_devices"));
    list_->setAccessibleName(tr("设备"));
    auto* refreshButton = new QPushButton(tr("刷新"));
    refreshButton->setObjectName(QStringLiteral("pushButton_refresh"));
    connect(refreshButton, &QPushButton::clicked, this, [this] {
        previous_ = chosen();
        refresh();
    });
    QDialogButtonBox* buttons = okCancelButtons(*this);
    buttons->addButton(refreshButton, QDialogButtonBox::ResetRole);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
    resize(420, 300);
}

bool DeviceListDialog::refresh() {
    list_->clear();
    const auto devices = listAdbDevices(this, adb_);
    if (!devices) {
        return false;
    }
    for (const platform::android::DeviceEntry& device : *devices) {
        const QString serial = QString::fromStdString(device.serial);
        const bool ready = device.state == "device";
        auto* item = new QListWidgetItem(
            ready ? serial : tr("%1 (%2)").arg(serial, QString::fromStdString(device.state)));
        item->setData(Qt::UserRole, serial);
        // Offline and unauthorised devices cannot be driven.
        item->setFlags(ready ? Qt::ItemIsEnabled | Qt::ItemIsUserCheckable : Qt::NoItemFlags);
        item->setCheckState(ready && (previous_.isEmpty() || previous_.contains(serial))
                                ? Qt::Checked
                                : Qt::Unchecked);
        list_->addItem(item);
    }
    if (list_->count() == 0) {
        auto* none = new QListWidgetItem(tr("未发现ADB设备，请先连接设备"));
        none->setFlags(Qt::NoItemFlags);
        list_->addItem(none);
    }
    return true;
}

QStringList DeviceListDialog::chosen() const {
    QStringList serials;
    for (int row = 0; row < list_->count(); ++row) {
        const QListWidgetItem* item = list_->item(row);
        if (item->checkState() == Qt::Checked) {
            serials << item->data(Qt::UserRole).toString();
        }
    }
    return serials;
}

}  // namespace autoscene::ui

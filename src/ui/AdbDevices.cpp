#include "ui/AdbDevices.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QThread>
#include <QTimer>
#include <memory>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"

Q_LOGGING_CATEGORY(lcAdb, "autoscene.ui.adb")

namespace autoscene::ui {

namespace {

// adb answers at once when its server runs; longer means it is starting one.
constexpr int kStartingNoticeMs = 300;

}  // namespace

std::optional<std::vector<platform::android::DeviceEntry>> listAdbDevices(
    QWidget* parent, const platform::android::AdbClient& adb) {
    platform::android::AdbResult listed;
    std::unique_ptr<QThread> worker(QThread::create([&] { listed = adb.run({}, "devices"); }));
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);

    QMessageBox starting(QMessageBox::Information,
                         QCoreApplication::translate("AdbDevices", "提示"),
                         QCoreApplication::translate("AdbDevices", "正在启动ADB服务"),
                         QMessageBox::NoButton, parent);
    starting.setStandardButtons(QMessageBox::NoButton);
    starting.setWindowModality(Qt::ApplicationModal);
    nameControlsAfterText(starting);
    QTimer::singleShot(kStartingNoticeMs, &starting, [&] {
        if (worker->isRunning()) {
            starting.show();
        }
    });
    worker->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    worker->wait();
    starting.hide();

    // Its header line is what adb prints once its server answers.
    if (!listed.ran || listed.output.find("List of devices attached") == std::string::npos) {
        qCWarning(lcAdb).noquote() << "adb devices:" << QString::fromStdString(listed.output);
        showNotice(parent, QCoreApplication::translate("AdbDevices", "ADB服务启动失败"));
        return std::nullopt;
    }
    return platform::android::parseDeviceList(listed.output);
}

}  // namespace autoscene::ui

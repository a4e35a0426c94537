// ADB mode from the main window: the device list and the device checks of a run's start,
// against test devices behind a private adb server.
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QSet>
#include <QTest>

#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "TestDevice.h"

namespace autoscene::testing {
namespace {

class AdbMode : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        QString error;
        ASSERT_TRUE(window_->openTask(android_.path(), &error)) << error.toStdString();
    }

    // Opens "ADB模式" and ticks only `serial` in the list before accepting it.
    QStringList chooseOnly(const QString& serial) {
        QStringList listed;
        answerModals(
            [&] { targetMenu(1)->trigger(); },
            {{"确定", {}, [&](QWidget& dialog) {
                  auto* list = dialog.findChild<QListWidget*>("listWidget_devices");
                  for (int row = 0; row < list->count(); ++row) {
                      QListWidgetItem* item = list->item(row);
                      listed << item->text() + (item->checkState() == Qt::Checked ? " ✓" : "");
                      item->setCheckState(item->text() == serial ? Qt::Checked : Qt::Unchecked);
                  }
              }}});
        return listed;
    }

    PrivateAdb adb_;
    TestTask android_{QStringLiteral(AUTOSCENE_ANDROID_TASK)};
};

TEST_F(AdbMode, NoDeviceOrNoAdbStopTheStartAndTheTickedDeviceRunsTheTaskAndStopsWhenAsked) {
    EXPECT_EQ(answerModal([&] { run().start(); }, "确定").text, "未发现ADB设备，请先连接设备");
    // An installation whose adb cannot be found.
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    ui::MainWindow withoutAdb(ui::AppConfig(task_.configPath()), {backend_.get()});
    qputenv("PATH", path);
    QString error;
    ASSERT_TRUE(withoutAdb.openTask(android_.path(), &error));
    EXPECT_EQ(answerModal([&] { withoutAdb.runControl().start(); }, "确定").text,
              "ADB服务启动失败");
    EXPECT_EQ(withoutAdb.runControl().state(), State::Idle);

    TestDevice chosen;
    TestDevice other;
    ASSERT_TRUE(adb_.connect(chosen, other));
    const QStringList listed = chooseOnly(chosen.serial());
    EXPECT_EQ(QSet(listed.begin(), listed.end()),
              QSet<QString>({chosen.serial() + " ✓", other.serial() + " ✓"}))
        << "every ready device is ticked at first";
    EXPECT_EQ(window_->findChild<QLabel*>("label_wintitle")->text(), "ADB模式: " + chosen.serial());

    EXPECT_FALSE(answerModal([&] { run().start(); }, "确定").shown);
    ASSERT_TRUE(waitFor(State::Running));
    EXPECT_TRUE(chosen.waitForLine("screen DONE", 20000));
    EXPECT_TRUE(waitFor(State::Idle));
    EXPECT_TRUE(other.log().isEmpty());

    android_.dropLastScenesEvents();
    ASSERT_TRUE(window_->openTask(android_.path(), &error));
    ASSERT_TRUE(run().start());
    ASSERT_TRUE(waitFor(State::Running));
    QTest::qWait(500);
    QElapsedTimer stopping;
    stopping.start();
    EXPECT_TRUE(stops());
    EXPECT_LT(stopping.elapsed(), 1000);
}

TEST_F(AdbMode, ScreenshotTakesTheChosenDeviceAndStopEndsAFirstCaptureTriedOffThread) {
    TestDevice device({"--size", "360x640"});
    ASSERT_TRUE(adb_.connect(device));
    chooseOnly(device.serial());
    EXPECT_EQ(run().captureImage().size(), QSize(360, 640));
    device.pause();  // keeps adb waiting
    ASSERT_TRUE(run().start());
    EXPECT_TRUE(run().checkingDevice());
    QElapsedTimer stopping;
    stopping.start();
    run().stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !run().checkingDevice(); }, 5000));
    EXPECT_LT(stopping.elapsed(), 500);

    ASSERT_TRUE(run().start());
    const ModalSeen failed = answerModal(
        [&] {
            device.kill();
            EXPECT_TRUE(QTest::qWaitFor([&] { return !run().checkingDevice(); }, 15000));
        },
        "确定");
    EXPECT_EQ(failed.text, "截图失败！");
    EXPECT_EQ(run().state(), State::Idle);
}

}  // namespace
}  // namespace autoscene::testing

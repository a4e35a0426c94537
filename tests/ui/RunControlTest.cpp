#include <QAction>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "ui/LogTargetWindow.h"
#include "ui/RunView.h"
#include "ui/SettingView.h"

// Xlib's macros (None) after gtest's names.
#include "DemoTargetProcess.h"
#include "FakeKeys.h"
#include "XvfbServer.h"

namespace autoscene::testing {
namespace {

class RunFromWindow : public MainWindowTest {
protected:
    // A demo target the size the task was saved with, so that no size question comes.
    std::unique_ptr<DemoTargetProcess> startDemo(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), {"--geometry", "800x600+0+0"});
        auto demo = std::make_unique<DemoTargetProcess>(
            qEnvironmentVariable("DISPLAY").toStdString(), arguments);
        EXPECT_TRUE(demo->started());
        return demo;
    }

    QAction& action(const char* name) { return *window_->findChild<QAction*>(name); }

    std::vector<ModalSeen> clickRun(const std::vector<ModalAnswer>& answers) {
        return answerModals([&] { action("action_run").trigger(); }, answers);
    }
};

TEST_F(RunFromWindow, RunsTheDemoToItsStopActionAndLogsIt) {
    const auto demo = startDemo();
    EXPECT_FALSE(clickRun({{"确定"}})[0].shown) << "no check should have stopped the start";
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    QTest::keyClick(window_.get(), Qt::Key_F7);
    EXPECT_TRUE(waitFor(State::Idle));
    EXPECT_TRUE(demo->waitForLine("screen FINISH", 0, 0));
    EXPECT_EQ(window_->runView().targetCount(), 1);
    EXPECT_GE(window_->runView().firedCount(0), 5) << "start, menu, form (3), finish";

    ui::LogTargetWindow& log = window_->logWindow();
    EXPECT_TRUE(log.isVisible());
    ASSERT_EQ(log.targetCount(), 1);
    const QString name = QStringLiteral("目标1 (窗口 0x%1)").arg(demo->window(), 0, 16);
    EXPECT_EQ(log.findChild<QLabel*>("label_log_target")->text(), name);
    EXPECT_EQ(log.findChild<QPushButton*>("pushButton_target_1")->styleSheet(),
              "background-color: green;");
    const QString text = log.shownText();
    EXPECT_TRUE(QRegularExpression(R"(^\d\d:\d\d:\d\d\.\d{3} 进入界面 )").match(text).hasMatch())
        << text.toStdString();
    EXPECT_GE(text.count(" › "), 5);
    EXPECT_TRUE(text.contains(R"("clicked":true)")) << "each action's result record";
    log.findChild<QPushButton*>("pushButton_close")->click();
    EXPECT_FALSE(log.isVisible());
}

TEST_F(RunFromWindow, StartsPausesAndStopsWhilePausedRecordingNothingWithPlaybackOff) {
    task_.dropLastScenesEvents();
    reopen();
    ui::AppConfig(task_.configPath()).setPlayback(false);
    const auto demo = startDemo();
    clickRun({});
    EXPECT_TRUE(demo->waitForLine("screen FINISH", 0, 5000));

    action("action_run").trigger();
    action("action_run").trigger();
    EXPECT_EQ(run().state(), State::Running);

    EXPECT_EQ(answerModal([&] { window_->close(); }, "确定").text,
              "任务正在运行中,请停止后任务再关闭");
    EXPECT_TRUE(window_->isVisible());

    action("action_run").trigger();
    ASSERT_EQ(run().state(), State::Paused);
    action("action_stop").trigger();
    EXPECT_TRUE(waitFor(State::Idle));
    EXPECT_FALSE(run().runner());
    EXPECT_TRUE(QDir(ui::AppConfig::playbackFolder(task_.configPath()))
                    .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                    .isEmpty());
}

TEST_F(RunFromWindow, WindowNotFoundOffersToChooseAgainAndNoTargetChosenSaysSo) {
    // The window would open the target menu, which waits for a click.
    QObject::disconnect(&run(), &ui::RunControl::windowChoiceRequested, window_.get(), nullptr);
    QSignalSpy choose(&run(), &ui::RunControl::windowChoiceRequested);
    EXPECT_EQ(answerModal([&] { run().start(); }, "否").text, "未发现指定窗口,是否重新选择");
    answerModal([&] { run().start(); }, "是");
    EXPECT_EQ(choose.count(), 1);
    EXPECT_EQ(run().state(), State::Idle);

    task_.edit([](QJsonObject& root) { root["window_info"] = QJsonObject{}; });
    reopen();
    EXPECT_EQ(clickRun({{"确定"}})[0].said(), "提示: 需要先选择目标窗口");
    EXPECT_EQ(run().state(), State::Idle);
}

TEST_F(RunFromWindow, SeveralWindowsNeedAChoiceFromTheListOrWithTheCrosshair) {
    const auto first = startDemo();
    const auto twin = startDemo();  // mapped later, so above `first`
    const auto second = startDemo({"--title", "Second Demo", "--geometry", "800x600+400+100"});
    EXPECT_EQ(clickRun({{"确定"}})[0].text, "发现多个目标窗口,需要先选择窗口");
    EXPECT_EQ(run().state(), State::Idle);
    QAction* choose = targetMenu(0);
    ASSERT_TRUE(choose);
    answerModals([&] { choose->trigger(); },
                 {{"确定", {}, [&](QWidget& dialog) {
                       auto* list = dialog.findChild<QListWidget*>("listWidget_windows");
                       const auto rows = list->findItems("Second Demo", Qt::MatchStartsWith);
                       ASSERT_EQ(rows.size(), 1);
                       EXPECT_EQ(rows[0]->text(), "Second Demo  [AutosceneDemo]  800x600");
                       list->setCurrentItem(rows[0]);
                   }}});
    const model::WindowInfo& info = window_->editor().document().settings.windowInfo;
    EXPECT_EQ(info.title, "Second Demo");
    EXPECT_TRUE(info.isFullmatchTitle);

    QTimer::singleShot(100, [&] {
        auto* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        QTest::mouseClick(dialog->findChild<QPushButton*>("pushButton_pick_window"),
                          Qt::LeftButton);
        // Left of the second demo, outside the main window: only the twins are there.
        Display* user = XOpenDisplay(nullptr);
        clickAt(user, 100, 300);
        XCloseDisplay(user);
    });
    choose->trigger();
    EXPECT_EQ(window_->findChild<QLabel*>("label_wintitle")->text(), "Autoscene Demo");
    clickRun({});
    EXPECT_TRUE(twin->waitForLine("screen MENU", 0, 5000));
    EXPECT_FALSE(first->waitForLine("screen MENU", 0, 200)) << "the run is on the twin only";
    EXPECT_TRUE(stops());
}

TEST_F(RunFromWindow, WindowOfAnotherSizeMayBeResized) {
    const auto demo = startDemo({"--geometry", "640x480+0+0"});
    EXPECT_EQ(clickRun({{"否"}})[0].text,
              "当前窗口大小与选择窗口时大小不一致，可能会导致脚本运行时识别不准备，是否调整窗口大小"
              "！");
    ASSERT_EQ(run().state(), State::Running);
    EXPECT_EQ(backend_->describe(demo->window()).clientRect.width, 640);
    ASSERT_TRUE(stops());

    clickRun({{"是"}});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return backend_->describe(demo->window()).clientRect.width == 800; }, 3000));
    EXPECT_EQ(backend_->describe(demo->window()).clientRect.height, 600);
    EXPECT_TRUE(stops());
}

TEST_F(RunFromWindow, AFailedFirstCaptureStopsTheStart) {
    // Background capture of the demo on an X server without Composite cannot get a frame.
    XvfbServer bare(1024, 768, 24, {"-extension", "Composite"});
    DemoTargetProcess demo(bare.display(), {"--geometry", "800x600+0+0"});
    ASSERT_TRUE(demo.started());
    task_.edit([](QJsonObject& root) { root["back_capture"] = true; });
    const auto backend = platform::makeX11Backend(bare.display().c_str());
    ui::MainWindow window(ui::AppConfig(task_.configPath()), {backend.get()});
    QString error;
    ASSERT_TRUE(window.openTask(task_.path(), &error));

    EXPECT_EQ(answerModal([&] { window.runControl().start(); }, "确定").said(), "提示: 截图失败！");
    EXPECT_EQ(window.runControl().state(), State::Idle);
}

TEST_F(RunFromWindow, UnsetOrChangedRunModeIsAskedAboutFirst) {
    const auto demo = startDemo();
    const auto runsThenStops = [&] {
        ASSERT_EQ(run().state(), State::Running);
        ASSERT_TRUE(stops());
    };
    ui::AppConfig(task_.configPath()).setLoopMode(0);
    const auto seen = clickRun({{"确定"}, {"取消"}});
    EXPECT_EQ(
        seen[0].said(),
        "运行模式选择提示: 检测到你还未设置自动化任务的运行模式，请先设置运行模式后再编辑脚本");
    EXPECT_EQ(seen[1].title, "选择运行模式");
    EXPECT_EQ(ui::AppConfig(task_.configPath()).loopMode(), 0) << "cancelled: nothing chosen";
    clickRun({{"确定"}, {"确定"}});
    EXPECT_EQ(ui::AppConfig(task_.configPath()).loopMode(), 1);
    runsThenStops();

    ui::AppConfig(task_.configPath()).setLoopMode(2);
    EXPECT_EQ(clickRun({{"不修改"}})[0].said(),
              "运行模式修改提示: "
              "检测到你的运行模式已修改，当前脚本的运行模式为顺序模式，是否修改成单事件模式执行");
    EXPECT_EQ(window_->editor().document().settings.loopMode, 1);
    runsThenStops();
    const auto viewed = clickRun({{"查看设置"}, {"确定"}});
    EXPECT_EQ(viewed[1].title, "选择运行模式");
    clickRun({{"修改后执行"}});
    EXPECT_EQ(window_->editor().document().settings.loopMode, 2);
    runsThenStops();
}

TEST_F(RunFromWindow, BackgroundPluginChosenInTheSettingsCapturesAndActsForTheRun) {
    const auto demo = startDemo();
    const QDir folder = task_.folder();
    folder.mkdir("plugins");
    ASSERT_TRUE(QFile::copy(FILE_BACKEND_PLUGIN, folder.filePath("plugins/file-backend.so")));
    // The plug-in shows the run a still of the demo's first screen.
    const platform::BgraFrame frame = backend_->capture(demo->window(), false);
    ASSERT_TRUE(
        QImage(frame.pixels.data(), frame.width, frame.height, frame.stride, QImage::Format_RGB32)
            .save(folder.filePath("capture.ppm")));
    qputenv("FILE_BACKEND_DIR", folder.path().toUtf8());

    model::TaskDocument& task = window_->editor().document();
    ui::SettingView view(task, ui::AppConfig(task_.configPath()));
    const ModalSeen refused = answerModal(
        [&] { EXPECT_FALSE(view.choosePlugin(folder.filePath("script.json"))); }, "确定");
    EXPECT_EQ(refused.text, "插件加载失败");
    ASSERT_TRUE(view.choosePlugin(folder.filePath("plugins/file-backend.so")));
    ui::TaskSetup setup = ui::TaskSetup::of(task);
    view.applyTo(setup);
    ASSERT_TRUE(window_->editor().changeSetup(std::move(setup), "plug-in"));
    EXPECT_EQ(task.funcPluginFile, "plugins/file-backend.so") << "kept relative to the task";
    EXPECT_EQ(task.enabledPluginFunc.text, R"(["capture","mouse","key","input","wheel"])");

    EXPECT_FALSE(clickRun({{"确定"}})[0].shown);
    const QString window = QString::number(demo->window());
    const auto log = [&] { return test::logLines(folder.filePath("input.log")); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return !log().filter("down " + window).empty(); }, 10000))
        << "the start screen's tap goes through the plug-in: " << log().join('|').toStdString();
    ASSERT_TRUE(stops());
    EXPECT_EQ(log().mid(0, 4),
              (QStringList{"global_init", "global_uninit", "global_init", "init " + window}))
        << "loaded once to check it in the settings, then for the run";
    EXPECT_EQ(log().mid(log().size() - 2), (QStringList{"uninit " + window, "global_uninit"}))
        << "the plug-in is unloaded when the run ends";
    EXPECT_TRUE(demo->settledLines("main ButtonPress", 0).empty()) << "the window got nothing";
}

}  // namespace
}  // namespace autoscene::testing

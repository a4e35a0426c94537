#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QTest>

#include "EventForms.h"
#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "keys/HotKeyText.h"

// Xlib's macros (None, Bool) after everything else.
#include <X11/keysym.h>

#include "DemoTargetProcess.h"
#include "FakeKeys.h"

namespace autoscene::testing {
namespace {

class HotKeys : public MainWindowTest {
protected:
    void SetUp() override {
        task_.dropLastScenesEvents();
        MainWindowTest::SetUp();
        ASSERT_TRUE(keyboard_);
    }

    void press(const std::vector<KeySym>& keysyms) { pressKeys(keyboard_.get(), keysyms); }
    void startsAndStops(const std::vector<KeySym>& start, const std::vector<KeySym>& stop) {
        press(start);
        ASSERT_TRUE(waitFor(State::Running));
        press(stop);
        ASSERT_TRUE(waitFor(State::Idle));
    }
    void ignored(const std::vector<KeySym>& keysyms, const char* why) {
        press(keysyms);
        QTest::qWait(300);
        EXPECT_EQ(run().state(), State::Idle) << why;
    }

    DemoTargetProcess demo_{qEnvironmentVariable("DISPLAY").toStdString(),
                            {"--geometry", "800x600+0+0"}};
    std::unique_ptr<Display, decltype(&XCloseDisplay)> keyboard_{XOpenDisplay(nullptr),
                                                                 XCloseDisplay};
};

TEST_F(HotKeys, KeyHeldByAnotherProgramOrUnreadableIsNamedAndTheOthersStillWork) {
    window_.reset();
    const auto other = platform::makeX11HotKeys(nullptr);
    ASSERT_TRUE(other->registerKey(1, *platform::keys::parseHotKey("F8")));
    window_ = std::make_unique<ui::MainWindow>(ui::AppConfig(task_.configPath()), desktop());
    EXPECT_EQ(answerModal([&] { reopen(); }, "确定").said(), "提示: 启动热键注册失败");

    ignored({XK_F8}, "F8 belongs to the other program");

    press({XK_Alt_L, XK_Shift_L, XK_s});
    const QDir shots(task_.folder().filePath("ori"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shots.entryList({"*.png"}).size() == 1; }, 3000));

    ASSERT_TRUE(run().start());
    press({XK_F10});
    EXPECT_TRUE(waitFor(State::Idle));

    // An unreadable key text fails like a held key.
    ui::AppConfig(task_.configPath()).setHotKeys("Alt+Shift+S", "Ctrl+F2", "Shift+Hyper");
    EXPECT_EQ(answerModal([&] { reopen(); }, "确定").text, "停止热键注册失败");
}

TEST_F(HotKeys, StartAndStopFromAnyWindowWithTheConfigFilesKeysOrThoseTheSettingsTake) {
    startsAndStops({XK_F8}, {XK_F10});

    ui::AppConfig(task_.configPath()).setHotKeys("Ctrl+F2", "Ctrl+F3", "Ctrl+F4");
    reopen();
    ignored({XK_F8}, "F8 is no longer the start key");
    startsAndStops({XK_Control_L, XK_F3}, {XK_Control_L, XK_F4});

    answerModals(
        [&] { window_->findChild<QAction*>("action_settings")->trigger(); },
        {{"确定", {}, [&](QWidget& view) {
              auto* start = view.findChild<QLineEdit*>("lineEdit_start_key");
              ASSERT_TRUE(start);
              EXPECT_EQ(start->text(), "Ctrl+F3");
              QTest::keyClick(start, Qt::Key_F6, Qt::ControlModifier);
              fill(view, {{"checkBox_back_capture", "1"}, {"radioButton_concurrency", "1"}});
          }}});
    EXPECT_EQ(ui::AppConfig(task_.configPath()).startKey(), "Ctrl+F6");
    EXPECT_TRUE(window_->editor().document().settings.backCapture);
    EXPECT_TRUE(window_->editor().document().settings.concurrency);
    EXPECT_EQ(window_->editor().document().settings.loopInterval, 100)
        << "the demo's interval lies between the slider's steps and the slider was not moved";
    ignored({XK_Control_L, XK_F3}, "Ctrl+F3 was given up at once");
    startsAndStops({XK_Control_L, XK_F6}, {XK_Control_L, XK_F4});
}

}  // namespace
}  // namespace autoscene::testing

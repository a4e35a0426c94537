// The task page: configurations saved, loaded and synchronised, and one task run on two
// demo windows at once with its background plug-in.
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include "ModalAnswer.h"
#include "TestFiles.h"
#include "TestTask.h"
#include "ui/LogTargetWindow.h"
#include "ui/TaskMainPage.h"
#include "x11/X11Backend.h"
#include "x11/X11HotKeys.h"

// Xlib's macros (None) after gtest's names.
#include <X11/keysym.h>

#include "DemoTargetProcess.h"
#include "FakeKeys.h"

namespace autoscene::testing {
namespace {

using State = ui::RunControl::State;

class TaskPage : public ::testing::Test {
protected:
    void SetUp() override {
        // "typed" and "gold" are set per target.
        task_.markConfigVariables({0, 2});
        ui::AppConfig(task_.configPath()).setLoopMode(1);
        backend_ = platform::makeX11Backend(nullptr);
        hotKeys_ = platform::makeX11HotKeys(nullptr);
        page_ = std::make_unique<ui::TaskMainPage>(
            ui::AppConfig(task_.configPath()),
            ui::Desktop{backend_.get(), nullptr, hotKeys_.get()});
        QString error;
        ASSERT_TRUE(page_->openTask(task_.path(), &error)) << error.toStdString();
        page_->move(820, 0);
        page_->show();
    }

    QTableWidget& table() { return *page_->findChild<QTableWidget*>("tableWidget_targets"); }
    void click(const char* button) { page_->findChild<QPushButton*>(button)->click(); }

    static ui::ConfiguredTarget window(platform::WindowHandle handle, const QString& title,
                                       const QString& typed) {
        return {handle, title, {}, {{1, typed}, {3, "1,2,3,4"}}};
    }

    TestTask task_;
    std::unique_ptr<platform::IDesktopBackend> backend_;
    std::unique_ptr<platform::IGlobalHotKeys> hotKeys_;
    std::unique_ptr<ui::TaskMainPage> page_;
};

TEST_F(TaskPage, ConfigurationsAreSavedLoadedAndSynchronised) {
    EXPECT_EQ(answerModal([&] { click("pushButton_load"); }, "确定").text, "还没有保存任何配置");
    EXPECT_EQ(table().horizontalHeaderItem(1)->text(), "typed");
    EXPECT_EQ(table().horizontalHeaderItem(2)->text(), "gold");

    page_->setConfiguration({{window(0x400001, "A", "1"), {0, {}, "emulator-5554", {}}}});
    EXPECT_EQ(table().item(1, 2)->text(), "440,160,130,80") << "the task's own value at first";
    table().setCurrentCell(0, 1);
    EXPECT_EQ(answerModal([&] { click("pushButton_sync"); }, "确定").text,
              "将当前配置信息同步给所有设备");
    EXPECT_EQ(table().item(1, 1)->text(), "1");
    EXPECT_EQ(table().item(1, 2)->text(), "1,2,3,4");

    EXPECT_EQ(answerModal([&] { click("pushButton_save"); }, "确定", "两台").text, "输入名称");
    ASSERT_TRUE(QFile::exists(task_.folder().filePath("saves/两台.json")));
    const auto refused =
        answerModals([&] { click("pushButton_save"); }, {{"确定", "a/b"}, {"确定"}});
    EXPECT_TRUE(refused[1].text.startsWith("保存配置失败: 名称不能为空")) << "no file name";

    const ui::RunConfiguration saved = page_->configuration();
    page_->setConfiguration({});
    answerModal([&] { click("pushButton_load"); }, "确定");
    EXPECT_EQ(ui::configurationToJson(page_->configuration()), ui::configurationToJson(saved));
}

TEST(TaskPageConfiguration, UnreadableConfigurationsNameTheirFirstBadField) {
    // Each row: the configuration's text, the start of its error.
    const QJsonArray cases =
        QJsonDocument::fromJson(test::readFile(AUTOSCENE_FIXTURES "/ui/bad-configurations.json"))
            .array();
    ASSERT_EQ(cases.size(), 5);
    for (const QJsonValue entry : cases) {
        QString error;
        EXPECT_FALSE(ui::configurationFromJson(entry[0].toString().toUtf8(), &error))
            << entry[0].toString().toStdString();
        EXPECT_TRUE(error.startsWith(entry[1].toString())) << error.toStdString();
    }
}

TEST_F(TaskPage, RunsOneTaskOnTwoWindowsAtOnceWithItsPluginAndStops) {
    // In parallel and in the background, as windows on top of each other need; the plug-in
    // only for the wheel, which the task does not turn.
    const QDir folder = task_.folder();
    ASSERT_TRUE(QFile::copy(FILE_BACKEND_PLUGIN, folder.filePath("file-backend.so")));
    qputenv("FILE_BACKEND_DIR", folder.path().toUtf8());
    task_.edit([](QJsonObject& root) {
        root["concurrency"] = true;
        root["back_act"] = true;
        root["back_capture"] = true;
        root["func_plugin_file"] = "file-backend.so";
        root["enabled_plugin_func"] = QJsonArray{"wheel"};
    });
    QString error;
    ASSERT_TRUE(page_->openTask(task_.path(), &error));
    const std::string display = qEnvironmentVariable("DISPLAY").toStdString();
    DemoTargetProcess first(display, {"--geometry", "800x600+0+0"});
    DemoTargetProcess second(display, {"--geometry", "800x600+0+0"});
    ASSERT_TRUE(first.started() && second.started());
    page_->setConfiguration(
        {{window(first.window(), "first", "1"), window(second.window(), "second", "2")}});
    // The start hot key, pressed as a user would.
    Display* keyboard = XOpenDisplay(nullptr);
    pressKeys(keyboard, {XK_F8});
    XCloseDisplay(keyboard);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return page_->runControl().state() == State::Running; }, 3000));
    EXPECT_TRUE(first.waitForLine("screen MENU", 0, 10000));
    EXPECT_TRUE(second.waitForLine("screen MENU", 0, 10000));
    click("pushButton_stop");
    EXPECT_TRUE(QTest::qWaitFor([&] { return page_->runControl().state() == State::Idle; }, 5000));
    EXPECT_EQ(page_->logWindow().targetCount(), 2);
    const QString loaded = test::readFile(folder.filePath("input.log"));
    for (const auto* target : {&first, &second}) {
        EXPECT_TRUE(loaded.contains(QStringLiteral("\ninit %1\n").arg(target->window())));
    }

    page_->setConfiguration({{window(0x3fffff, "gone", "1")}});
    EXPECT_EQ(answerModal([&] { click("pushButton_start"); }, "确定").text, "未发现指定窗口: gone");
}

}  // namespace
}  // namespace autoscene::testing

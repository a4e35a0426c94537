// A first task built the way a new user builds it, against xcalc on the test's display: a new
// task from the welcome window, xcalc chosen as the target, a screenshot through the screen
// tools, its buttons cut as templates, a scene and an event entered through the editor's
// forms, saved, and run by autoscene-run, after which xcalc shows what 12+30= gives.
#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <chrono>
#include <thread>

#include "ClientProcess.h"
#include "EventForms.h"
#include "ModalAnswer.h"
#include "ProgramRun.h"
#include "editor/EventEditor.h"
#include "ui/AutoRunner.h"
#include "ui/EventTree.h"
#include "ui/MainWindow.h"
#include "ui/SceneListView.h"
#include "x11/X11Backend.h"

// Last: Xlib defines names (Bool, None) that the headers above use.
#include "ReferenceScreen.h"
#include "XcalcLayout.h"

namespace autoscene::testing {
namespace {

using platform::Rect;

// xcalc's display once it stopped changing.
platform::BgraFrame settledDisplay(const ReferenceScreen& screen, Rect display) {
    platform::BgraFrame last = screen.read(display);
    for (int i = 0; i < 30; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        platform::BgraFrame next = screen.read(display);
        if (firstDifference(next, last).empty()) {
            break;
        }
        last = std::move(next);
    }
    return last;
}

TEST(BuildXcalcTask, CutFromAScreenshotAndEnteredInTheEditorItRunsTwelvePlusThirty) {
    const std::string display = qEnvironmentVariable("DISPLAY").toStdString();
    ClientProcess xcalc(display, {"xcalc", "-geometry", "+0+0"});
    auto backend = platform::makeX11Backend(nullptr);
    platform::WindowHandle calculatorWindow = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        for (const platform::WindowHandle window : backend->topLevelWindows()) {
            if (backend->matches(window, {.title = "Calculator", .fullMatchTitle = true})) {
                calculatorWindow = window;
            }
        }
        return calculatorWindow != 0;
    })) << "xcalc (Debian package x11-apps) did not show its window";
    ReferenceScreen screen(display);
    XSync(screen.display(), False);
    const Calculator calculator = calculatorLayout(screen.display(), Window(calculatorWindow));
    ASSERT_EQ(calculator.rows.size(), 11u);
    const Rect client = backend->describe(calculatorWindow).clientRect;

    // A new task, with xcalc chosen from the window list.
    QTemporaryDir home;
    QTemporaryDir taskFolder;
    ui::AutoRunner welcome(ui::AppConfig(home.filePath("config.ini")),
                           {backend.get(), nullptr, nullptr, nullptr});
    const std::unique_ptr<ui::MainWindow> window(welcome.createTask(taskFolder.path()));
    ASSERT_TRUE(window);
    window->move(client.x + client.width + 20, 0);
    auto* targetMenu = window->findChild<QPushButton*>("pushButton_select_window")->menu();
    answerModals([&] { targetMenu->actions().front()->trigger(); },
                 {{"确定", {}, [&](QWidget& dialog) {
                       auto* list = dialog.findChild<QListWidget*>("listWidget_windows");
                       const auto rows = list->findItems("Calculator  [", Qt::MatchStartsWith);
                       ASSERT_EQ(rows.size(), 1);
                       list->setCurrentItem(rows.front());
                   }}});

    // A screenshot of it, kept as an original, and its buttons cut as templates.
    ui::ScreenToolsDialog& tools = window->screenTools(ui::ScreenToolsDialog::Mode::Template);
    tools.move(client.x + client.width + 20, 0);
    tools.findChild<QPushButton*>("pushButton_capture")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return tools.originalId() > 0; }));
    const auto& keys = calculator.rows;
    const std::pair<QString, Rect> buttons[] = {{"1", keys[9][1]},  {"2", keys[9][2]},
                                                {"+", keys[9][4]},  {"3", keys[9][3]},
                                                {"0", keys[10][1]}, {"=", keys[10][4]}};
    for (const auto& [name, button] : buttons) {
        SCOPED_TRACE(name.toStdString());
        // Typed coordinates, in the screenshot's pixels.
        fill(tools, {{"spinBox_x", QString::number(button.x - client.x)},
                     {"spinBox_y", QString::number(button.y - client.y)},
                     {"spinBox_width", QString::number(button.width)},
                     {"spinBox_height", QString::number(button.height)},
                     {"lineEdit_name", name}});
        tools.findChild<QPushButton*>("pushButton_save")->click();
        const QString unique = QString("已保存: %1，在原图中只匹配一处").arg(name);
        auto* message = tools.findChild<QLabel*>("label_message");
        EXPECT_TRUE(QTest::qWaitFor([&] { return message->text() == unique; }))
            << message->text().toStdString();
    }
    tools.close();

    // A scene known by its "=" button, whose one event clicks 1 2 + 3 0 = and stops.
    const int sceneRow = ui::TaskEditor::kFixedRows - 1;
    answerModal([&] { window->sceneList().addAfter(sceneRow); }, "确定", "calculator");
    const auto editEvent = [&](int row, const Event& event) {
        answerModals([&] { window->eventTree().editEvent(row); },
                     {{"确定", {}, [&](QWidget& dialog) {
                           fillEvent(static_cast<ui::EventEditor&>(dialog), event);
                       }}});
    };
    editEvent(0, {"calculator shown", {{1, {{"image_id", "="}}}}, {}});
    window->eventTree().addEvent();
    std::vector<Item> clicks;
    for (const auto& [name, button] : buttons) {
        clicks.push_back({2, {{"image_id", name}, {"postpone", "0.2"}}});
    }
    clicks.push_back({10, {}});
    editEvent(1, {"12+30=", {}, clicks});
    window->findChild<QAction*>("action_save")->trigger();

    // xcalc cleared, then the task run as a user runs it.
    backend->mouse({calculatorWindow, 0}, centreOf(keys[0][4]), platform::MouseOp::LeftClick, 0,
                   true);
    const platform::BgraFrame cleared = settledDisplay(screen, calculator.display);
    const auto run =
        test::runProgram(AUTOSCENE_RUN_PATH, {taskFolder.path(), "--json", "--time-limit", "30"},
                         test::onDisplay(display));
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString() << run.err.toStdString();
    EXPECT_EQ(run.lines("action").size(), std::size(buttons) + 1) << run.out.toStdString();
    const platform::BgraFrame computed = settledDisplay(screen, calculator.display);

    // What 4 2 typed on xcalc's keys shows.
    for (const Rect key : {keys[0][4], keys[8][1], keys[9][2]}) {
        backend->mouse({calculatorWindow, 0}, centreOf(key), platform::MouseOp::LeftClick, 0, true);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return firstDifference(settledDisplay(screen, calculator.display), computed).empty();
    })) << "xcalc does not show 42 after the run";
}

}  // namespace
}  // namespace autoscene::testing

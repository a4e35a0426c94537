#pragma once
// A main window on a fresh copy of the demo task, with a config.ini of its own, driving the
// test's display.

#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "TestTask.h"
#include "ui/MainWindow.h"
#include "ui/SceneListView.h"
#include "x11/X11Backend.h"
#include "x11/X11HotKeys.h"
#include "x11/X11WindowPicker.h"

namespace autoscene::testing {

class MainWindowTest : public ::testing::Test {
protected:
    using State = ui::RunControl::State;

    void SetUp() override {
        // The demo's own run mode: runs start without the run-mode question.
        ui::AppConfig(task_.configPath()).setLoopMode(1);
        window_ = std::make_unique<ui::MainWindow>(ui::AppConfig(task_.configPath()), desktop());
        reopen();
        // Right of where the tests put the demo target, which must not be covered.
        window_->move(820, 0);
        window_->show();
    }

    // Opens the task again, as saved now.
    void reopen() {
        QString error;
        ASSERT_TRUE(window_->openTask(task_.path(), &error)) << error.toStdString();
    }

    static QStringList rowTexts(const QAbstractItemModel& model) {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row) {
            texts << model.index(row, 0).data().toString();
        }
        return texts;
    }
    QStringList sceneNames() const { return rowTexts(*window_->sceneList().model()); }

    ui::RunControl& run() { return window_->runControl(); }

    // A run takes seconds on a loaded machine; a stuck one still fails in time.
    bool waitFor(State state, int timeout = 20000) {
        return QTest::qWaitFor([&] { return run().state() == state; }, timeout);
    }
    bool stops() {
        run().stop();
        return waitFor(State::Idle);
    }

    // 选择窗口, ADB模式, 全屏模式 and 查看修改窗口信息, in this order.
    QAction* targetMenu(int entry) const {
        return window_->findChild<QPushButton*>("pushButton_select_window")
            ->menu()
            ->actions()
            .value(entry);
    }

    // Before the window that uses it.
    ui::Desktop desktop() {
        backend_ = platform::makeX11Backend(nullptr);
        hotKeys_ = platform::makeX11HotKeys(nullptr);
        picker_ = platform::makeX11WindowPicker(nullptr);
        return {backend_.get(), nullptr, hotKeys_.get(), picker_.get()};
    }

    TestTask task_;
    std::unique_ptr<platform::IDesktopBackend> backend_;
    std::unique_ptr<platform::IGlobalHotKeys> hotKeys_;
    std::unique_ptr<platform::IWindowPicker> picker_;
    std::unique_ptr<ui::MainWindow> window_;
};

}  // namespace autoscene::testing

// The window methods of `auto` against the demo target on a private Xvfb.

#include <gtest/gtest.h>

#include "engine/TaskInfo.h"
#include "model/TaskDocument.h"
#include "script/ScriptEngineHolder.h"

// Xlib's macros (Bool, None) after the headers that use those names.
#include "X11TestFixture.h"
#include "x11/X11WindowControl.h"

namespace autoscene::testing {
namespace {

class WindowMethods : public X11TestFixture {
protected:
    void SetUp() override {
        X11TestFixture::SetUp();
        control = platform::makeX11WindowControl(server_.display().c_str());
        ASSERT_NE(control, nullptr);
        demo = startDemo({});
        handle = QString::number(demo->window());
        worker.kind = engine::TargetKind::Window;
    }

    QString run(const QString& code) {
        script::ScriptEngineHolder holder;
        holder.prepareRuntime(
            script::ScriptContext{task, nullptr, &worker, nullptr, nullptr, control.get()});
        return holder.evaluate(QString(code).replace("%H", handle)).text;
    }

    std::unique_ptr<platform::IWindowControl> control;
    std::unique_ptr<DemoTargetProcess> demo;
    model::TaskDocument task;
    engine::TaskInfo worker;
    QString handle;
};

TEST_F(WindowMethods, FindSearchMoveResizeRaiseAndClose) {
    const QString found = run("JSON.stringify(auto.findWindow('Autoscene Demo', 'AutosceneDemo'))");
    EXPECT_TRUE(found.startsWith(
        QStringLiteral(R"([{"class_name":"AutosceneDemo","hwnd":"%1",)").arg(handle)))
        << found.toStdString();
    EXPECT_TRUE(found.contains(R"("rect":")") && found.contains(",640,480\""))
        << found.toStdString();
    EXPECT_EQ(run("auto.findWindow('Autoscene', '').length"), "0");  // whole titles only
    EXPECT_EQ(run("auto.findWindow('', '').length"), "1");
    EXPECT_EQ(run("auto.searchWindow('Autoscene', '')[0].hwnd"), handle);
    EXPECT_EQ(run("auto.searchWindow('', 'Demo')[0].title"), "Autoscene Demo");
    EXPECT_EQ(run("auto.searchWindow('nobody', '').length"), "0");

    EXPECT_EQ(run("auto.findChildWindow('%H', 'panel', 'Panel')"), QString::number(demo->panel()));
    EXPECT_EQ(run("auto.findChildWindow('%H', 'nobody', '')"), "");
    EXPECT_EQ(run("auto.findChildWindow('junk', '', '')"), "");

    run("auto.moveWindow('%H', 100, 50)");
    EXPECT_TRUE(eventually(
        [&] { return run("var r = auto.getWindowRect('%H'); r.x + ',' + r.y") == "100,50"; }));
    run("auto.setWindowClientSize('%H', 500, 300)");
    EXPECT_TRUE(eventually([&] {
        return run("var r = auto.getClientRect('%H'); [r.x, r.y, r.width, r.height].join()") ==
               "100,50,500,300";
    }));
    // Without a window manager the window is its own frame: outer and client sizes agree.
    run("auto.setWindowSize('%H', 400, 200)");
    EXPECT_TRUE(eventually([&] {
        return run("var r = auto.getWindowRect('%H'); [r.x, r.y, r.width, r.height].join()") ==
               "100,50,400,200";
    }));

    run("auto.setForegroundWindow('%H')");
    Window focus = None;
    int revert = 0;
    XGetInputFocus(reference_->display(), &focus, &revert);
    EXPECT_EQ(focus, demo->window());

    // Handles that name no window change nothing and read as empty records.
    for (const char* bad : {"0", "junk", "-1", "99999999999"}) {
        SCOPED_TRACE(bad);
        handle = QString::fromLatin1(bad);
        EXPECT_EQ(run("auto.moveWindow('%H', 1, 1); auto.setWindowSize('%H', 9, 9); "
                      "auto.closeWindow('%H'); auto.setForegroundWindow('%H'); "
                      "JSON.stringify([auto.getWindowRect('%H'), auto.getClientRect('%H')])"),
                  "[{},{}]");
    }
    handle = QString::number(demo->window());
    EXPECT_EQ(run("auto.getWindowRect('%H').width"), "400");

    run("auto.closeWindow('%H')");
    EXPECT_TRUE(
        eventually([&] { return run("auto.findWindow('Autoscene Demo', '').length") == "0"; }));
}

}  // namespace
}  // namespace autoscene::testing

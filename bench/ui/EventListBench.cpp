// How the event list and the undo stack keep up with long scenes: showing a scene, one
// edit through the undo stack (the list refreshed after it) and its undo, at 1 000 and
// 10 000 events of one condition and one action each. Prints a table; the ratio column compares the long scene with the short.
#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <functional>

#include "editor/TaskEditor.h"
#include "ui/EventTree.h"

namespace {

using autoscene::model::EditorEvent;
using autoscene::ui::EventTree;
using autoscene::ui::TaskEditor;

struct Times {
    double showMs = 0;
    double editMs = 0;
    double undoMs = 0;
};

double millis(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    QApplication::processEvents();
    return double(clock.nsecsElapsed()) / 1e6;
}

Times measure(int events) {
    TaskEditor editor;
    auto& scene = editor.document().scenes.emplace_back(QStringLiteral("long"));
    for (int i = 0; i < events; ++i) {
        EditorEvent& event = scene.events.emplace_back(QStringLiteral("event %1").arg(i));
        event.id = i + 1;
        event.conditions.append(std::make_unique<autoscene::model::EditorJavaScriptCondition>());
        event.actions.push_back(std::make_unique<autoscene::model::EditorDelayAction>());
    }
    EventTree tree(editor);
    tree.resize(480, 800);
    tree.show();
    Times times;
    const int row = TaskEditor::kFixedRows;
    times.showMs = millis([&] { tree.showScene(row); });
    times.editMs = millis([&] {
        EditorEvent changed = *editor.eventAt(row, events / 2);
        changed.disabled = true;
        editor.replaceEvent(row, events / 2, std::move(changed), {});
    });
    times.undoMs = millis([&] { editor.undo(); });
    return times;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    measure(100);  // the first window pays for fonts and styles
    const Times shortScene = measure(1000);
    const Times longScene = measure(10000);
    std::printf("%-22s %14s %14s %8s\n", "", "1 000 events", "10 000 events", "ratio");
    const auto row = [](const char* what, double a, double b) {
        std::printf("%-22s %11.1f ms %11.1f ms %7.1fx\n", what, a, b, b / std::max(a, 0.1));
    };
    row("show the scene", shortScene.showMs, longScene.showMs);
    row("switch one event off", shortScene.editMs, longScene.editMs);
    row("undo it", shortScene.undoMs, longScene.undoMs);
    return 0;
}

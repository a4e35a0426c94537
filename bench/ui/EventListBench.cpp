// The event list on long scenes: the list as it is (a flat model whose texts are made for
// the rows in view) beside the list as it was (a QTreeWidget holding an item per event and
// per line, every event expanded), at 1 000 and 10 000 events of one condition and one
// action each. Times showing the scene and switching one event off through the undo stack
// (the list updated after it), and undoing that. Prints a table; the ratio column is the
// old list's time over the new one's.
#include <QApplication>
#include <QElapsedTimer>
#include <QTreeWidget>
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

void fillScene(TaskEditor& editor, int events) {
    auto& scene = editor.document().scenes.emplace_back(QStringLiteral("long"));
    for (int i = 0; i < events; ++i) {
        EditorEvent& event = scene.events.emplace_back(QStringLiteral("event %1").arg(i));
        event.id = i + 1;
        event.conditions.append(std::make_unique<autoscene::model::EditorJavaScriptCondition>());
        event.actions.push_back(std::make_unique<autoscene::model::EditorDelayAction>());
    }
}

// The list as it was: an item per event and per line, refilled row by row on a change.
void fillItem(QTreeWidgetItem& row, const EditorEvent& event, const TaskEditor& editor) {
    row.setText(0, event.name);
    qDeleteAll(row.takeChildren());
    for (const auto* item : event.items()) {
        (new QTreeWidgetItem(&row))->setText(0, item->describe(editor.document()));
    }
    row.setExpanded(true);
}

Times measure(int events, bool model) {
    TaskEditor editor;
    fillScene(editor, events);
    const int scene = TaskEditor::kFixedRows;
    const int row = events / 2;
    EventTree tree(editor);
    QTreeWidget items;
    QWidget& shown = model ? static_cast<QWidget&>(tree) : items;
    shown.resize(480, 800);
    shown.show();
    if (!model) {
        items.setHeaderHidden(true);
        items.setUniformRowHeights(true);
        QObject::connect(&editor, &TaskEditor::eventChanged, &items, [&](int, int changed) {
            fillItem(*items.topLevelItem(changed), *editor.eventAt(scene, changed), editor);
        });
    }
    Times times;
    times.showMs = millis([&] {
        if (model) {
            tree.showScene(scene);
            return;
        }
        QList<QTreeWidgetItem*> rows;
        for (const EditorEvent* event : editor.sceneAt(scene)->allEvents()) {
            rows << new QTreeWidgetItem;
            fillItem(*rows.back(), *event, editor);
        }
        items.addTopLevelItems(rows);
        items.expandAll();
    });
    times.editMs = millis([&] {
        EditorEvent changed = *editor.eventAt(scene, row);
        changed.disabled = true;
        editor.replaceEvent(scene, row, std::move(changed), {});
    });
    times.undoMs = millis([&] { editor.undo(); });
    return times;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    measure(100, true);  // the first window pays for fonts and styles
    measure(100, false);
    std::printf("%-22s %8s %14s %14s %8s\n", "", "events", "QTreeWidget", "model", "ratio");
    for (const int events : {1000, 10000}) {
        const Times before = measure(events, false);
        const Times after = measure(events, true);
        const auto row = [&](const char* what, double a, double b) {
            std::printf("%-22s %8d %11.1f ms %11.1f ms %7.1fx\n", what, events, a, b,
                        a / std::max(b, 0.05));
        };
        row("show the scene", before.showMs, after.showMs);
        row("switch one event off", before.editMs, after.editMs);
        row("undo it", before.undoMs, after.undoMs);
    }
    return 0;
}

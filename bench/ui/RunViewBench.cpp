// How long the window's event loop waits while a run reports events at a given rate to the
// run view and the log window, as the main window shows them: the batched feed (one queued
// signal per batch) against one queued call per event. Prints a
// table; the ratio column says how many times longer the worst wait is per event.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "engine/Scene.h"
#include "ui/LogTargetWindow.h"
#include "ui/RunFeed.h"
#include "ui/RunView.h"

namespace {

using autoscene::ui::LogTargetWindow;
using autoscene::ui::RunFeed;
using autoscene::ui::RunView;

struct LoopDelays {
    double maxMs = 0;
    double p99Ms = 0;
    int shown = 0;
};

// Reports `rate` events a second for `seconds` from a worker; meanwhile a 5 ms timer
// measures how late the window's loop serves it.
LoopDelays measure(int rate, bool batched, double seconds) {
    RunView view;
    view.resize(480, 600);
    view.show();
    LogTargetWindow log;
    log.show();
    const auto show = [&](const std::vector<RunFeed::Note>& notes) {
        view.addNotes(notes);
        log.addNotes(notes);
    };
    RunFeed feed;
    QObject::connect(
        &feed, &RunFeed::notesReady, &view, [&] { show(feed.take()); }, Qt::QueuedConnection);
    autoscene::engine::Scene scene;
    scene.name = QStringLiteral("menu");
    autoscene::engine::RuntimeEvent event;
    event.name = QStringLiteral("choose gold");

    std::vector<double> delays;
    QElapsedTimer clock;
    clock.start();
    qint64 expected = 5;
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        delays.push_back(std::max<qint64>(0, clock.elapsed() - expected));
        expected = clock.elapsed() + 5;
    });
    tick.start(5);

    std::atomic<bool> done{false};
    std::thread worker([&] {
        const auto start = std::chrono::steady_clock::now();
        const auto period = std::chrono::nanoseconds(1'000'000'000 / rate);
        for (int i = 0; i < int(rate * seconds); ++i) {
            std::this_thread::sleep_until(start + period * i);
            if (batched) {
                feed.actionsDone(scene, event);
            } else {
                RunFeed::Note note{std::this_thread::get_id(), scene.name, event.name, {}, false};
                QMetaObject::invokeMethod(
                    &view, [&show, note] { show({note}); }, Qt::QueuedConnection);
            }
        }
        done = true;
    });
    while (!done) {
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    worker.join();
    QApplication::processEvents();
    tick.stop();

    LoopDelays result;
    std::sort(delays.begin(), delays.end());
    if (!delays.empty()) {
        result.maxMs = delays.back();
        result.p99Ms = delays[delays.size() * 99 / 100];
    }
    result.shown = view.firedCount(0);
    return result;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::printf("%-12s %14s %14s %14s %14s %10s\n", "events/s", "batched max", "batched p99",
                "per-event max", "per-event p99", "max ratio");
    for (const int rate : {1000, 5000, 20000}) {
        const LoopDelays batched = measure(rate, true, 2.0);
        const LoopDelays each = measure(rate, false, 2.0);
        std::printf("%-12d %11.1f ms %11.1f ms %11.1f ms %11.1f ms %9.1fx\n", rate, batched.maxMs,
                    batched.p99Ms, each.maxMs, each.p99Ms,
                    each.maxMs / std::max(batched.maxMs, 1.0));
        if (batched.shown != int(rate * 2.0) || each.shown != int(rate * 2.0)) {
            std::printf("  (shown %d and %d of %d events)\n", batched.shown, each.shown,
                        int(rate * 2.0));
        }
    }
    return 0;
}

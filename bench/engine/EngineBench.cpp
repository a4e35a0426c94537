// The engine's own cost per cycle: 50 scenes of 20 events with variable conditions
// on a frame that costs nothing to capture, and memory after many cycles.

#include <benchmark/benchmark.h>

#include <QString>
#include <QStringList>
#include <chrono>
#include <fstream>
#include <opencv2/core.hpp>
#include <string>
#include <thread>

#include "InProcessTarget.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "model/TaskDocument.h"

using namespace autoscene;

namespace {

constexpr int kScenes = 50;
constexpr int kEvents = 20;

// Only the last scene is recognised, so every cycle evaluates all identifications
// and then walks 20 events whose conditions do not hold.
QByteArray benchTask() {
    QStringList scenes;
    const QString condition = QStringLiteral(
        R"({"type": 2, "relation": 1, "variable_id": 1, "compare_value": "%1", "state": 0})");
    for (int s = 0; s < kScenes; ++s) {
        QStringList events;
        for (int e = 0; e < kEvents; ++e) {
            events << QStringLiteral(R"({"name": "e%1", "item_group": {"type": 5, "item_list":
                [%2, %3]}, "action_list": [{"type": 3, "variable_id": 2, "change_type": 1}]})")
                          .arg(e)
                          .arg(condition.arg("never"), condition.arg("also never"));
        }
        const QString id = s == kScenes - 1 ? QStringLiteral("on") : QStringLiteral("off%1").arg(s);
        scenes << QStringLiteral(R"({"name": "s%1", "scene_event": {"item_group": {"type": 5,
            "item_list": [%2]}}, "event_list": [%3]})")
                      .arg(s)
                      .arg(condition.arg(id), events.join(','));
    }
    return QStringLiteral(R"({"loop_mode": 1, "loop_interval": 0, "var_list": [
        {"type": 1, "id": 1, "value": "on"}, {"type": 1, "id": 2, "value": "0"}],
        "scene_list": [%1]})")
        .arg(scenes.join(','))
        .toUtf8();
}

long residentKb() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::stol(line.substr(6));
        }
    }
    return 0;
}

void BM_EngineCycles(benchmark::State& state) {
    const std::int64_t cycles = state.range(0);
    model::TaskDocument task;
    task.openText(benchTask());
    engine::RuntimeFactory factory;
    test::InProcessTarget target;
    target.setFrames({cv::Mat(8, 8, CV_8UC3, cv::Scalar::all(0))});
    engine::TaskRunner runner(task, factory, target);
    runner.setLoopIntervalMs(0);
    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        runner.start({{engine::TargetKind::Desktop}});
        while (runner.cyclesCompleted() < cycles) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        runner.stop();
        runner.waitUntilIdle(std::chrono::seconds(60));
        seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(seconds);
    }
    state.counters["cycles_per_s"] = double(runner.cyclesCompleted()) / seconds;
    state.counters["conditions_per_s"] =
        double(runner.cyclesCompleted()) * (kScenes + 2 * kEvents) / seconds;
    state.counters["rss_kb"] = double(residentKb());
}
BENCHMARK(BM_EngineCycles)
    ->Arg(1000)
    ->Arg(100000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

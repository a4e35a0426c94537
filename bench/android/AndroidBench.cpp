// Frames and taps per second on test devices through the real adb (bench/android/run.sh
// starts them): the device-service route, raw "exec-out screencap", the PNG route
// ("screencap -p" and decoding), and taps on each route; on the adb route also as they
// were sent before the kept shell, one adb process each.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "engine/TaskInfo.h"
#include "targets/DeviceTarget.h"

namespace {

using autoscene::engine::TargetKind;
using autoscene::engine::TaskInfo;
using autoscene::platform::android::AdbClient;
using autoscene::targets::DeviceTarget;
using Route = DeviceTarget::Route;

DeviceTarget::Options options(Route route) {
    DeviceTarget::Options chosen;
    chosen.route = route;
    const char* file = std::getenv("AUTOSCENE_BENCH_SERVICE_FILE");
    chosen.serviceFile = file != nullptr ? file : "";
    return chosen;
}

DeviceTarget& target(Route route) {
    static DeviceTarget adb{AdbClient("adb"), options(Route::Adb)};
    static DeviceTarget service{AdbClient("adb"), options(Route::Service)};
    return route == Route::Service ? service : adb;
}

// The device named by the environment variable, or skips the benchmark.
bool useDevice(benchmark::State& state, const char* variable, TaskInfo& task) {
    const char* serial = std::getenv(variable);
    if (serial == nullptr) {
        state.SkipWithError((std::string(variable) + " not set; use run.sh").c_str());
        return false;
    }
    task.kind = TargetKind::AndroidDevice;
    task.serial = QString::fromUtf8(serial);
    return true;
}

int captureWidth(DeviceTarget& device, const TaskInfo& task) {
    int width = 0;
    device.capture(task, [&](const autoscene::platform::BgraView& view) { width = view.width; });
    return width;
}

void capture(benchmark::State& state, Route route, const char* variable) {
    TaskInfo task;
    if (!useDevice(state, variable, task)) {
        return;
    }
    captureWidth(target(route), task);  // starts the service or settles the format first
    for (auto _ : state) {
        if (captureWidth(target(route), task) != 720) {
            state.SkipWithError("no frame");
            return;
        }
    }
}

void tap(benchmark::State& state, Route route) {
    TaskInfo task;
    if (!useDevice(state, "AUTOSCENE_BENCH_RAW_SERIAL", task)) {
        return;
    }
    captureWidth(target(route), task);
    for (auto _ : state) {
        target(route).mouse(task, {10, 10}, autoscene::platform::MouseOp::LeftClick, 0);
    }
}

void BM_TapAdbPerCall(benchmark::State& state) {
    TaskInfo task;
    if (!useDevice(state, "AUTOSCENE_BENCH_RAW_SERIAL", task)) {
        return;
    }
    const AdbClient adb("adb");
    for (auto _ : state) {
        if (!adb.shell(task.serial.toStdString(), "input tap 10 10").ran) {
            state.SkipWithError("adb failed");
            return;
        }
    }
}

void BM_CaptureService(benchmark::State& state) {
    capture(state, Route::Service, "AUTOSCENE_BENCH_RAW_SERIAL");
}
void BM_CaptureRaw(benchmark::State& state) {
    capture(state, Route::Adb, "AUTOSCENE_BENCH_RAW_SERIAL");
}
void BM_CapturePng(benchmark::State& state) {
    capture(state, Route::Adb, "AUTOSCENE_BENCH_PNG_SERIAL");
}
void BM_TapService(benchmark::State& state) {
    tap(state, Route::Service);
}
void BM_TapAdb(benchmark::State& state) {
    tap(state, Route::Adb);
}

BENCHMARK(BM_CaptureService)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CaptureRaw)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CapturePng)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TapService)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TapAdb)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TapAdbPerCall)->UseRealTime()->MinTime(3.0)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

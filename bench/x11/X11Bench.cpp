// Capture and input costs of the X11 back end, side by side with the X tools a user would
// reach for. Expects DISPLAY and AUTOSCENE_BENCH_WINDOW (a full-screen window) from run.sh.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "x11/X11Backend.h"

namespace {

using autoscene::platform::BgraFrame;
using autoscene::platform::IDesktopBackend;
using autoscene::platform::InputTarget;
using autoscene::platform::MouseOp;
using autoscene::platform::Point;
using autoscene::platform::WindowHandle;

struct Setup {
    std::unique_ptr<IDesktopBackend> backend = autoscene::platform::makeX11Backend(nullptr);
    WindowHandle window = 0;

    Setup() {
        const char* id = std::getenv("AUTOSCENE_BENCH_WINDOW");
        window = id != nullptr ? std::strtoull(id, nullptr, 0) : 0;
    }
};

Setup& setup() {
    static Setup instance;
    return instance;
}

bool ready(benchmark::State& state) {
    if (!setup().backend || setup().window == 0) {
        state.SkipWithError("needs DISPLAY and AUTOSCENE_BENCH_WINDOW; run bench/x11/run.sh");
        return false;
    }
    return true;
}

// The runner's path: the pixels are read where the back end left them, no frame copy.
void viewWith(benchmark::State& state, bool background) {
    if (!ready(state)) {
        return;
    }
    int width = 0;
    int height = 0;
    for (auto _ : state) {
        const bool captured = setup().backend->captureView(
            setup().window, background, [&](const autoscene::platform::BgraView& view) {
                width = view.width;
                height = view.height;
                benchmark::DoNotOptimize(view.pixels[view.stride * (view.height - 1)]);
            });
        if (!captured) {
            state.SkipWithError("capture failed");
            return;
        }
    }
    state.counters["width"] = width;
    state.counters["height"] = height;
}

void BM_ViewForeground(benchmark::State& state) {
    viewWith(state, false);
}
void BM_ViewBackground(benchmark::State& state) {
    viewWith(state, true);
}

// The owned frame of capture(): a new buffer and a full-frame copy on top of the read.
void BM_CaptureForegroundCopy(benchmark::State& state) {
    if (!ready(state)) {
        return;
    }
    for (auto _ : state) {
        BgraFrame frame = setup().backend->capture(setup().window, false);
        benchmark::DoNotOptimize(frame.pixels.data());
    }
}

void runCommand(benchmark::State& state, const std::string& command) {
    if (std::system(
            ("command -v " + command.substr(0, command.find(' ')) + " >/dev/null").c_str()) != 0) {
        state.SkipWithError("tool not installed");
        return;
    }
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("tool failed");
            return;
        }
    }
}

void BM_CaptureXwdRoot(benchmark::State& state) {
    runCommand(state, "xwd -root -silent >/dev/null");
}
void BM_CaptureImportRoot(benchmark::State& state) {
    runCommand(state, "import -window root bmp:- >/dev/null");
}

// The press itself lasts 1 ms here, so what is measured is the overhead around it.
void tapWith(benchmark::State& state, bool background) {
    if (!ready(state)) {
        return;
    }
    const InputTarget target{setup().window, 0};
    for (auto _ : state) {
        setup().backend->mouse(target, Point{5, 5}, MouseOp::LeftClick, 1, background);
    }
}

void BM_TapBackground(benchmark::State& state) {
    tapWith(state, true);
}
void BM_TapForeground(benchmark::State& state) {
    tapWith(state, false);
}

// 10 ms between characters is deliberate pacing; the rest is the cost of typing.
void BM_Type20Characters(benchmark::State& state) {
    if (!ready(state)) {
        return;
    }
    const InputTarget target{setup().window, 0};
    for (auto _ : state) {
        setup().backend->inputText(target, "abcdefghij0123456789");
    }
}

BENCHMARK(BM_ViewForeground)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_ViewBackground)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_CaptureForegroundCopy)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_CaptureXwdRoot)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_CaptureImportRoot)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_TapBackground)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_TapForeground)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_Type20Characters)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();

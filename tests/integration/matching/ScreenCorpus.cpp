#include "ScreenCorpus.h"

#include <chrono>
#include <memory>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <thread>

#include "DemoTargetProcess.h"
#include "UiTextCorpus.h"
#include "XvfbServer.h"
#include "x11/X11Backend.h"

// Last: Xlib defines names that the headers above use.
#include "ReferenceScreen.h"
#include "XcalcLayout.h"

namespace autoscene::testing {

namespace {

cv::Mat capture(platform::IDesktopBackend& backend) {
    platform::BgraFrame frame = backend.capture(0, false);
    if (frame.empty()) {
        return {};
    }
    cv::Mat bgr;
    cv::cvtColor(
        cv::Mat(frame.height, frame.width, CV_8UC4, frame.pixels.data(), size_t(frame.stride)), bgr,
        cv::COLOR_BGRA2BGR);
    return bgr;
}

// The screen once two captures a while apart agree: the programs draw in their own time.
cv::Mat settled(platform::IDesktopBackend& backend) {
    cv::Mat last = capture(backend);
    for (int attempt = 0; attempt < 20 && !last.empty(); ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        cv::Mat next = capture(backend);
        if (next.size() == last.size() && cv::norm(next, last, cv::NORM_INF) == 0) {
            return next;
        }
        last = next;
    }
    return last;
}

}  // namespace

Screen xScreen(int width, int height, const std::string& demoScreen) {
    Screen screen{std::to_string(width) + "x" + std::to_string(height) + " " + demoScreen, {}};
    XvfbServer server(width, height);
    if (server.display().empty()) {
        return screen;
    }
    const std::string& display = server.display();
    DemoTargetProcess demo(display,
                           {"--screen", demoScreen, "--geometry",
                            std::to_string(width / 2) + "x" + std::to_string(height / 2) + "+" +
                                std::to_string(width / 3) + "+" + std::to_string(height / 3)});
    const auto at = [&](double fx, double fy) {
        return "+" + std::to_string(int(fx * width)) + "+" + std::to_string(int(fy * height));
    };
    std::vector<std::unique_ptr<ClientProcess>> clients;
    for (const std::vector<std::string>& argv :
         {std::vector<std::string>{"xcalc", "-geometry", at(0, 0)},
          {"xlogo", "-geometry", "120x120" + at(0.75, 0.02)},
          {"xeyes", "-geometry", "100x70" + at(0.5, 0.02)},
          {"xlogo", "-geometry", "90x90" + at(0.8, 0.7)},
          {"xmessage", "-geometry", at(0.02, 0.85), "-buttons", "Save,Don't save,Cancel",
           "Save changes before closing?"}}) {
        clients.push_back(std::make_unique<ClientProcess>(display, argv));
        if (!clients.back()->started()) {
            return screen;
        }
    }
    const auto backend = platform::makeX11Backend(display.c_str());
    if (demo.started() && backend) {
        screen.bgr = settled(*backend);
    }
    ReferenceScreen reference(display);
    for (const platform::WindowHandle window : backend->topLevelWindows()) {
        if (backend->matches(window, {.title = "Calculator", .fullMatchTitle = true})) {
            const Calculator calculator = calculatorLayout(reference.display(), Window(window));
            for (size_t row = 7; row < calculator.rows.size(); ++row) {
                for (const platform::Rect key : calculator.rows[row]) {
                    screen.keys.emplace_back(key.x, key.y, key.width, key.height);
                }
            }
        }
    }
    return screen;
}

Screen ocrFrame() {
    const ocr::testkit::CorpusSample sample = ocr::testkit::uiTextFrame();
    const std::vector<std::uint8_t> png(sample.png.begin(), sample.png.end());
    return {"ocr frame", cv::imdecode(png, cv::IMREAD_COLOR)};
}

}  // namespace autoscene::testing

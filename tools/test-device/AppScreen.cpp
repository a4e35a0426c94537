#include "AppScreen.h"

#include <opencv2/imgproc.hpp>

#include "AppLayout.h"

namespace autoscene::testdevice {

namespace {

constexpr int kKeyHome = 3;
constexpr int kKeyBack = 4;
constexpr int kKeyDel = 67;

void label(cv::Mat& image, const std::string& text, cv::Point at, const cv::Scalar& colour) {
    cv::putText(image, text, at, cv::FONT_HERSHEY_SIMPLEX, 1.5, colour, 3, cv::LINE_8);
}

const char* screenName(Screen screen) {
    switch (screen) {
        case Screen::Start:
            return "START";
        case Screen::Done:
            return "DONE";
        default:
            return "HOME";
    }
}

}  // namespace

AppScreen::AppScreen(int width, int height, bool textured, EventLog& log)
    : width_(width), height_(height), log_(log) {
    if (textured) {
        texture_.create(height, width, CV_8UC4);
        cv::RNG(1).fill(texture_, cv::RNG::UNIFORM, cv::Scalar(0, 0, 0, 0),
                        cv::Scalar(48, 48, 48, 1));
    }
}

void AppScreen::show(Screen screen) {
    screen_ = screen;
    log_.write(std::string("screen ") + screenName(screen));
}

void AppScreen::tap(int x, int y) {
    log_.write("tap " + std::to_string(x) + " " + std::to_string(y));
    const cv::Point point(x, y);
    if (screen_ == Screen::Start && layout::kTapButton.contains(point)) {
        show(Screen::Done);
    } else if (screen_ == Screen::Done && layout::kBadge.contains(point)) {
        show(Screen::Start);
    }
}

void AppScreen::swipe(int x1, int y1, int x2, int y2, int durationMs) {
    log_.write("swipe " + std::to_string(x1) + " " + std::to_string(y1) + " " + std::to_string(x2) +
               " " + std::to_string(y2) + " " + std::to_string(durationMs));
}

void AppScreen::key(int androidKeyCode) {
    log_.write("key " + std::to_string(androidKeyCode));
    if (androidKeyCode == kKeyBack || androidKeyCode == kKeyHome) {
        field_.clear();
        show(Screen::Home);
    } else if (androidKeyCode == kKeyDel && !field_.empty()) {
        field_.pop_back();
    }
}

void AppScreen::text(const std::string& typed) {
    log_.write("text " + typed);
    if (screen_ == Screen::Start) {
        field_ += typed;
    }
}

bool AppScreen::startApp(const std::string& package) {
    if (package != kAppPackage) {
        return false;
    }
    log_.write("start " + package);
    show(Screen::Start);
    return true;
}

cv::Mat AppScreen::render() const {
    const cv::Scalar& background = screen_ == Screen::Home    ? layout::kHomeBackground
                                   : screen_ == Screen::Start ? layout::kStartBackground
                                                              : layout::kDoneBackground;
    cv::Mat image(height_, width_, CV_8UC4, background);
    switch (screen_) {
        case Screen::Home:
            label(image, "HOME", {40, 80}, layout::kFieldColour);
            break;
        case Screen::Start:
            cv::rectangle(image, layout::kTextField, layout::kFieldColour, cv::FILLED);
            label(image, field_, layout::kTextField.tl() + cv::Point(10, 55), layout::kInk);
            cv::rectangle(image, layout::kTapButton, layout::kButtonColour, cv::FILLED);
            label(image, "TAP", layout::kTapButton.tl() + cv::Point(60, 115), layout::kInk);
            break;
        case Screen::Done:
            cv::rectangle(image, layout::kBadge, layout::kBadgeColour, cv::FILLED);
            label(image, "DONE", layout::kBadge.tl() + cv::Point(140, 155), layout::kInk);
            break;
    }
    if (!texture_.empty()) {
        cv::add(image, texture_, image);
    }
    return image;
}

}  // namespace autoscene::testdevice

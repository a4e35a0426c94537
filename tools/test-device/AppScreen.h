#pragma once
// The device's screen: a launcher and one app whose screens react to taps, swipes, keys
// and typed text. Pixels are RGBA, as a device's screencap delivers them.

#include <opencv2/core/mat.hpp>
#include <string>

#include "EventLog.h"

namespace autoscene::testdevice {

// The app the device knows; monkey and am start it.
constexpr const char* kAppPackage = "com.autoscene.testapp";
constexpr const char* kAppActivity = ".MainActivity";

enum class Screen { Home, Start, Done };

class AppScreen {
public:
    // `textured` lays fixed noise over everything, as photos and text make a real screen
    // costly to compress.
    AppScreen(int width, int height, bool textured, EventLog& log);

    void tap(int x, int y);
    void swipe(int x1, int y1, int x2, int y2, int durationMs);
    void key(int androidKeyCode);
    void text(const std::string& typed);
    // False for a package the device does not have.
    bool startApp(const std::string& package);

    Screen screen() const { return screen_; }
    cv::Mat render() const;  // CV_8UC4, RGBA

private:
    void show(Screen screen);

    int width_;
    int height_;
    EventLog& log_;
    Screen screen_ = Screen::Home;
    std::string field_;
    cv::Mat texture_;  // empty unless textured
};

}  // namespace autoscene::testdevice

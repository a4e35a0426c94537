#pragma once
// The device's shell: the few commands a host sends (wm, screencap, input, settings, ime,
// am, monkey, pm, getprop, echo), run against one device state. Statements may be joined
// with ';' and '&&' and quoted as in sh.

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "AppScreen.h"
#include "EventLog.h"

namespace autoscene::testdevice {

struct DeviceConfig {
    int width = 720;
    int height = 1280;
    int density = 320;
    int screencapHeaderBytes = 16;  // 12 on devices before Android 9
    // The pixel format code in the raw header; the body stays RGBA, so any other code
    // stands for a device whose raw format a host cannot read.
    int rawFormat = 1;
    bool textured = false;  // noise over the screen, for benchmarks
};

// Splits one statement into words: blanks separate, '...' is literal, "..." and a
// backslash escape as in sh. No value for an open quote.
std::optional<std::vector<std::string>> splitWords(const std::string& statement);

class DeviceShell {
public:
    DeviceShell(const DeviceConfig& config, EventLog& log);

    // Everything the command line prints (binary for screencap).
    std::string run(const std::string& commandLine);
    // The current screen, RGBA.
    cv::Mat render();
    // Runs `use` on the app with the shell's lock held.
    void withScreen(const std::function<void(AppScreen&)>& use);
    // What "pkill app_process" does; true when it ended something.
    void setServiceKiller(std::function<bool()> kill) { killService_ = std::move(kill); }

private:
    std::string runStatement(const std::vector<std::string>& words, bool& ok);
    std::string wm(const std::vector<std::string>& words);
    std::string screencap(const std::vector<std::string>& words);
    std::string input(const std::vector<std::string>& words, bool& ok);
    std::string settings(const std::vector<std::string>& words);
    std::string ime(const std::vector<std::string>& words);
    std::string am(const std::vector<std::string>& words, bool& ok);
    std::string monkey(const std::vector<std::string>& words, bool& ok);

    std::mutex mutex_;
    const DeviceConfig config_;
    EventLog& log_;
    AppScreen screen_;
    std::string overrideSize_;
    int overrideDensity_ = 0;
    std::string inputMethod_ = "com.android.inputmethod.latin/.LatinIME";
    std::vector<std::string> enabledInputMethods_;
    std::function<bool()> killService_;
};

}  // namespace autoscene::testdevice

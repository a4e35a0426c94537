#pragma once
// Starting the recorder application and reading what it received.

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "win32/Win32Backend.h"
#include "win32/Win32Handles.h"

namespace autoscene::win32test {

using Lines = std::vector<std::string>;

// A file path next to the test program (programs built with it live there).
std::string besideTestProgram(const std::string& fileName);
// A new empty folder under the temporary folder.
std::string makeTempFolder(const std::string& prefix);

// Polls until the condition holds; false when the time runs out.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds timeout = std::chrono::seconds(5));

// Lines whose message (second field, hex) is one of the given messages.
Lines onlyMessages(const Lines& lines, std::initializer_list<unsigned> messages);

// The line the recorder logs for a mouse message at a client point.
std::string mouseLine(const char* window, unsigned message, unsigned wParam, int x, int y);

class RecorderProcess {
public:
    RecorderProcess();
    ~RecorderProcess();
    RecorderProcess(const RecorderProcess&) = delete;
    RecorderProcess& operator=(const RecorderProcess&) = delete;

    bool started() const { return top_ != nullptr; }
    HWND top() const { return top_; }
    // A child by its name in the layout ("outer", "inner", "side").
    HWND child(const char* name) const;

    // Everything logged since the last call. Posts a marker first and waits for it, so
    // every message posted before the call is included.
    Lines drainPosted();
    // Waits until `count` of the given messages have arrived since the last drain, returns
    // those messages and moves past everything logged so far.
    Lines waitForMessages(std::initializer_list<unsigned> messages, std::size_t count);

private:
    Lines readLog() const;

    std::string logPath_;
    PROCESS_INFORMATION processInfo_{};
    HWND top_ = nullptr;
    std::size_t consumedLines_ = 0;
    unsigned markerCount_ = 0;
};

// The recorder started, and a back end whose log lines are kept.
class RecorderTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(recorder.started()) << "recorder did not start"; }

    platform::WindowHandle top() const { return platform::win32::toHandle(recorder.top()); }
    platform::InputTarget topLevel() const { return {top(), 0}; }

    RecorderProcess recorder;
    Lines log;
    platform::win32::Win32Backend backend{[this](const std::string& line) { log.push_back(line); }};
};

}  // namespace autoscene::win32test

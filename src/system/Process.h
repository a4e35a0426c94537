#pragma once
// Child processes: run a command and capture what it prints, or start one hidden
// and detached. One implementation per OS (ProcessPosix.cpp, ProcessWin32.cpp).

#include <chrono>
#include <cstdint>
#include <stop_token>
#include <string>

namespace autoscene::sys {

// Runs `commandLine` (8-bit text: UTF-8 on POSIX, the ANSI code page on Windows),
// waits until it closes its output and returns everything it wrote to standard
// output and standard error, in order. Throws std::runtime_error whose text starts with
// "CreatePipe failed", "CreateProcess failed:<code>" or "ReadFile failed" (on Windows
// the others name the system's error code too).
std::string runCommandCapture(const std::string& commandLine);

enum class CommandEnd { Exited, TimedOut, Stopped };

struct CommandOutput {
    std::string output;  // what the child wrote until it exited or was ended
    CommandEnd end = CommandEnd::Exited;
};

// As above, but once `timeLimit` has passed or `stop` is requested the child is killed
// (on POSIX with its process group, so that what it started goes too) and reaped, and
// the call returns what it had read. milliseconds::max() sets no time limit.
CommandOutput runCommandCapture(const std::string& commandLine, std::chrono::milliseconds timeLimit,
                                std::stop_token stop);

// A started process. All zero when it could not start. On Windows the handles
// belong to the caller; on POSIX they stay 0 and the ids are pid and pid.
struct HiddenProcess {
    std::uintptr_t processHandle = 0;
    std::uintptr_t threadHandle = 0;
    std::uint32_t processId = 0;
    std::uint32_t threadId = 0;

    bool started() const { return processId != 0; }
};

// Starts `commandLine` without a window and without inherited handles; on failure
// prints "CreateProcess failed.\n" to standard output and returns all zero.
HiddenProcess startHiddenProcess(const std::string& commandLine);

}  // namespace autoscene::sys

#pragma once
// Runs the adb program: one child process per call, its output captured. Every command
// line is the program, " -s SERIAL" when a serial is given, then the arguments. A call
// that outlasts the client's time limit, or whose stop is requested, is ended.

#include <chrono>
#include <stop_token>
#include <string>
#include <string_view>

#include "system/Process.h"

namespace autoscene::platform::android {

// How a system names programs and separates the folders of its search path.
struct ProgramNaming {
    const char* adbName;
    char pathSeparator;
};
constexpr ProgramNaming kPosixNaming{"adb", ':'};
constexpr ProgramNaming kWindowsNaming{"adb.exe", ';'};

// `chosen` (the user's --adb) when not empty; else the adb program's bare name when a
// folder of `searchPath` holds it; else "adb/" + its name in `programFolder`.
std::string findAdbProgram(const std::string& programFolder, const std::string& chosen,
                           std::string_view searchPath, const ProgramNaming& naming);
// The same with this system's naming and search path (PATH).
std::string findAdbProgram(const std::string& programFolder, const std::string& chosen = {});

// `word` as one word of a command line that sys::splitCommandLine gives back unchanged.
std::string quoteWord(const std::string& word);

struct AdbResult {
    // false: adb could not be started, timed out or was stopped, and `output` says which
    bool ran = false;
    std::string output;  // otherwise standard output and standard error as printed
};

constexpr std::chrono::milliseconds kAdbTimeLimit{10000};

// Why `call` gave no answer: it timed out after `limit` or was stopped.
std::string unfinishedCall(const std::string& call, sys::CommandEnd end,
                           std::chrono::milliseconds limit);

class AdbClient {
public:
    explicit AdbClient(std::string program, std::chrono::milliseconds timeLimit = kAdbTimeLimit)
        : program_(std::move(program)), timeLimit_(timeLimit) {}

    const std::string& program() const { return program_; }
    std::chrono::milliseconds timeLimit() const { return timeLimit_; }
    // The command line that runs adb with `arguments` on the device `serial` (none: empty).
    std::string commandLine(const std::string& serial, const std::string& arguments) const;

    // `arguments` is a command-line fragment, quoted where needed.
    AdbResult run(const std::string& serial, const std::string& arguments,
                  std::stop_token stop = {}) const;
    // "shell COMMAND": the device's shell runs `deviceCommand` as it is.
    AdbResult shell(const std::string& serial, const std::string& deviceCommand,
                    std::stop_token stop = {}) const;
    // "exec-out COMMAND": as shell, but the output is passed through byte for byte.
    AdbResult execOut(const std::string& serial, const std::string& deviceCommand,
                      std::stop_token stop = {}) const;

private:
    std::string program_;
    std::chrono::milliseconds timeLimit_;
};

}  // namespace autoscene::platform::android

#pragma once
// Runs the adb program: one child process per call, its output captured. Every command
// line is the program, " -s SERIAL" when a serial is given, then the arguments.

#include <string>

namespace autoscene::platform::android {

// "adb" found on the search path, else "adb/adb" ("adb/adb.exe" on Windows) in
// `programFolder`; `chosen` (the user's --adb) wins when not empty.
std::string findAdbProgram(const std::string& programFolder, const std::string& chosen = {});

// `word` as one word of a command line that sys::splitCommandLine gives back unchanged.
std::string quoteWord(const std::string& word);

struct AdbResult {
    bool ran = false;    // false: the adb program could not be started (`output` says why)
    std::string output;  // standard output and standard error as printed
};

class AdbClient {
public:
    explicit AdbClient(std::string program) : program_(std::move(program)) {}

    const std::string& program() const { return program_; }

    // `arguments` is a command-line fragment, quoted where needed.
    AdbResult run(const std::string& serial, const std::string& arguments) const;
    // "shell COMMAND": the device's shell runs `deviceCommand` as it is.
    AdbResult shell(const std::string& serial, const std::string& deviceCommand) const;
    // "exec-out COMMAND": as shell, but the output is passed through byte for byte.
    AdbResult execOut(const std::string& serial, const std::string& deviceCommand) const;

private:
    std::string program_;
};

}  // namespace autoscene::platform::android

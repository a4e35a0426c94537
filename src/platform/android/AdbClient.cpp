#include "android/AdbClient.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "system/Process.h"

namespace autoscene::platform::android {

namespace {

bool onSearchPath(std::string_view searchPath, const ProgramNaming& naming) {
    std::string_view rest = searchPath;
    while (!rest.empty()) {
        const size_t end = rest.find(naming.pathSeparator);
        const std::string_view folder = rest.substr(0, end);
        std::error_code error;
        if (!folder.empty() && std::filesystem::is_regular_file(
                                   std::filesystem::path(folder) / naming.adbName, error)) {
            return true;
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return false;
}

}  // namespace

std::string findAdbProgram(const std::string& programFolder, const std::string& chosen,
                           std::string_view searchPath, const ProgramNaming& naming) {
    if (!chosen.empty()) {
        return chosen;
    }
    if (onSearchPath(searchPath, naming)) {
        return naming.adbName;
    }
    return (std::filesystem::path(programFolder) / "adb" / naming.adbName).string();
}

std::string findAdbProgram(const std::string& programFolder, const std::string& chosen) {
#ifdef _WIN32
    const ProgramNaming& naming = kWindowsNaming;
#else
    const ProgramNaming& naming = kPosixNaming;
#endif
    const char* path = std::getenv("PATH");
    return findAdbProgram(programFolder, chosen, path != nullptr ? path : "", naming);
}

std::string quoteWord(const std::string& word) {
    if (!word.empty() && word.find_first_of(" \t\"'\\") == std::string::npos) {
        return word;
    }
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') {
            quoted.push_back('\\');
        }
        quoted.push_back(c);
    }
    return quoted + "\"";
}

std::string AdbClient::commandLine(const std::string& serial, const std::string& arguments) const {
    std::string line = quoteWord(program_);
    if (!serial.empty()) {
        line += " -s " + quoteWord(serial);
    }
    return line + " " + arguments;
}

std::string unfinishedCall(const std::string& call, sys::CommandEnd end,
                           std::chrono::milliseconds limit) {
    return call + (end == sys::CommandEnd::Stopped
                       ? std::string(": stopped")
                       : ": timed out after " + std::to_string(limit.count()) + " ms");
}

AdbResult AdbClient::run(const std::string& serial, const std::string& arguments,
                         std::stop_token stop) const {
    sys::CommandOutput captured;
    try {
        captured =
            sys::runCommandCapture(commandLine(serial, arguments), timeLimit_, std::move(stop));
    } catch (const std::runtime_error& error) {
        return {false, "cannot run " + program_ + ": " + error.what()};
    }
    if (captured.end != sys::CommandEnd::Exited) {
        return {false, unfinishedCall("adb " + arguments, captured.end, timeLimit_)};
    }
    return {true, std::move(captured.output)};
}

AdbResult AdbClient::shell(const std::string& serial, const std::string& deviceCommand,
                           std::stop_token stop) const {
    return run(serial, "shell " + quoteWord(deviceCommand), std::move(stop));
}

AdbResult AdbClient::execOut(const std::string& serial, const std::string& deviceCommand,
                             std::stop_token stop) const {
    return run(serial, "exec-out " + quoteWord(deviceCommand), std::move(stop));
}

}  // namespace autoscene::platform::android

#include "android/AdbClient.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "system/Process.h"

namespace autoscene::platform::android {

namespace {

#ifdef _WIN32
constexpr const char* kAdbName = "adb.exe";
constexpr char kPathSeparator = ';';
#else
constexpr const char* kAdbName = "adb";
constexpr char kPathSeparator = ':';
#endif

bool onSearchPath(const char* name) {
    const char* path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const size_t end = rest.find(kPathSeparator);
        const std::string_view folder = rest.substr(0, end);
        std::error_code error;
        if (!folder.empty() &&
            std::filesystem::is_regular_file(std::filesystem::path(folder) / name, error)) {
            return true;
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return false;
}

}  // namespace

std::string findAdbProgram(const std::string& programFolder, const std::string& chosen) {
    if (!chosen.empty()) {
        return chosen;
    }
    if (onSearchPath(kAdbName)) {
        return kAdbName;
    }
    return (std::filesystem::path(programFolder) / "adb" / kAdbName).string();
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

AdbResult AdbClient::run(const std::string& serial, const std::string& arguments) const {
    std::string line = quoteWord(program_);
    if (!serial.empty()) {
        line += " -s " + quoteWord(serial);
    }
    line += " " + arguments;
    try {
        return {true, sys::runCommandCapture(line)};
    } catch (const std::runtime_error& error) {
        return {false, "cannot run " + program_ + ": " + error.what()};
    }
}

AdbResult AdbClient::shell(const std::string& serial, const std::string& deviceCommand) const {
    return run(serial, "shell " + quoteWord(deviceCommand));
}

AdbResult AdbClient::execOut(const std::string& serial, const std::string& deviceCommand) const {
    return run(serial, "exec-out " + quoteWord(deviceCommand));
}

}  // namespace autoscene::platform::android

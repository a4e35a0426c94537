#include "android/AdbShellSession.h"

#include <stdexcept>

namespace autoscene::platform::android {

namespace {

constexpr const char* kMarker = ":autoscene-done:";

}  // namespace

AdbShellSession::AdbShellSession(const AdbClient& adb, std::string serial)
    : adb_(adb), serial_(std::move(serial)) {}

AdbShellSession::~AdbShellSession() = default;

AdbResult AdbShellSession::run(const std::string& deviceCommand, const std::stop_token& stop) {
    if (deviceCommand.find('\n') != std::string::npos) {
        return {false, "a device command is one line: " + deviceCommand};
    }
    if (!shell_) {
        try {
            shell_ = std::make_unique<sys::PipedProcess>(adb_.commandLine(serial_, "shell"));
        } catch (const std::runtime_error& error) {
            return {false, "cannot run " + adb_.program() + ": " + error.what()};
        }
    }
    sys::PipedReply reply;
    if (shell_->write(deviceCommand + " ; echo " + kMarker + "\n")) {
        reply = shell_->readUntil(std::string(kMarker) + "\n", adb_.timeLimit(), stop);
    }
    if (reply.complete) {
        return {true, std::move(reply.output)};
    }
    shell_.reset();
    const std::string call = "adb shell " + deviceCommand;
    if (reply.end != sys::CommandEnd::Exited) {
        return {false, unfinishedCall(call, reply.end, adb_.timeLimit())};
    }
    return {false, call + ": the shell ended: " + reply.output.substr(0, 200)};
}

}  // namespace autoscene::platform::android

#include "OcrServiceProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "http/Http.h"

extern char** environ;

namespace autoscene::ocr::testkit {

namespace {

constexpr int kStartTimeoutMs = 60'000;
constexpr std::string_view kReadyText = "listening on 127.0.0.1:";

// Reads the child's output until the ready line is complete; returns it.
std::string readReadyLine(int fd) {
    std::string output;
    while (output.find('\n') == std::string::npos) {
        pollfd readable{fd, POLLIN, 0};
        if (::poll(&readable, 1, kStartTimeoutMs) <= 0) {
            throw std::runtime_error("morvane-ocr did not report its port in time");
        }
        char buffer[256] = {};
        const ssize_t readBytes = ::read(fd, buffer, sizeof buffer);
        if (readBytes <= 0) {
            throw std::runtime_error("morvane-ocr ended before listening: " + output);
        }
        output.append(buffer, static_cast<std::size_t>(readBytes));
    }
    return output;
}

}  // namespace

OcrServiceProcess::OcrServiceProcess(const std::string& program, int engineCount,
                                     const std::string& modelFolder, const std::string& errorFile) {
    int pipeFds[2] = {-1, -1};
    if (::pipe(pipeFds) != 0) {
        throw std::runtime_error("pipe failed");
    }
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
    posix_spawn_file_actions_addclose(&actions, pipeFds[1]);
    if (!errorFile.empty()) {
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0644);
    }
    std::string portText = "0";
    std::string engineText = std::to_string(engineCount);
    std::string programPath = program;
    std::string folder = modelFolder;
    char* argv[] = {programPath.data(), portText.data(), engineText.data(),
                    folder.empty() ? nullptr : folder.data(), nullptr};
    const int error = posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    if (error != 0) {
        ::close(pipeFds[0]);
        pid_ = 0;
        throw std::runtime_error("cannot start " + program);
    }
    try {
        const std::string line = readReadyLine(pipeFds[0]);
        ::close(pipeFds[0]);
        const std::size_t at = line.find(kReadyText);
        port_ = at == std::string::npos ? 0 : std::stoi(line.substr(at + kReadyText.size()));
    } catch (...) {
        ::close(pipeFds[0]);
        stop();
        throw;
    }
}

OcrServiceProcess::~OcrServiceProcess() {
    stop();
}

void OcrServiceProcess::stop() {
    if (pid_ > 0) {
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }
}

std::string OcrServiceProcess::url() const {
    return "http://127.0.0.1:" + std::to_string(port_) + "/ocr_detect";
}

std::string OcrServiceProcess::detect(std::string_view png, const std::string& engine,
                                      const std::string& fieldName) const {
    const http::HttpFilePart file{fieldName, "image.png", "image/png", png};
    const http::HttpFields fields =
        engine.empty() ? http::HttpFields{} : http::HttpFields{{"engine", engine}};
    return http::httpPostMultipart(url(), {}, file, fields).body;
}

}  // namespace autoscene::ocr::testkit

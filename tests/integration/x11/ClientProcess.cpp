#include "ClientProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace autoscene::testing {

ClientProcess::ClientProcess(const std::string& display, const std::vector<std::string>& argv) {
    char pattern[] = "/tmp/autoscene-client-XXXXXX";
    if (argv.empty() || mkdtemp(pattern) == nullptr) {
        return;
    }
    directory_ = pattern;
    outputPath_ = directory_ + "/stdout";
    std::vector<std::string> arguments = argv;
    std::vector<char*> raw;
    raw.reserve(arguments.size() + 1);
    for (auto& argument : arguments) {
        raw.push_back(argument.data());
    }
    raw.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
        setenv("DISPLAY", display.c_str(), 1);
        const int out = open(outputPath_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(out, STDOUT_FILENO);
        std::freopen("/dev/null", "w", stderr);
        execvp(raw[0], raw.data());
        _exit(127);
    }
}

ClientProcess::~ClientProcess() {
    stop();
    if (!directory_.empty()) {
        std::remove(outputPath_.c_str());
        rmdir(directory_.c_str());
    }
}

void ClientProcess::stop() {
    if (pid_ > 0) {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }
}

std::string ClientProcess::output() const {
    std::ifstream file(outputPath_);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace autoscene::testing

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "system/PipedProcess.h"
#include "system/PosixSpawn.h"

namespace autoscene::sys {

struct PipedProcess::Child {
    posix::UniqueFd input;
    posix::UniqueFd output;
    pid_t pid = 0;
};

PipedProcess::PipedProcess(const std::string& commandLine) : child_(std::make_unique<Child>()) {
    posix::Pipe input;
    posix::Pipe output;
    const posix::SpawnResult spawned = posix::spawn(commandLine, input.readEnd.get(),
                                                    output.writeEnd.get(), posix::Detach::OwnGroup);
    if (spawned.error != 0) {
        throw std::runtime_error("CreateProcess failed:" + std::to_string(spawned.error));
    }
    child_->pid = spawned.pid;
    child_->input.reset(input.writeEnd.release());
    child_->output.reset(output.readEnd.release());
}

PipedProcess::~PipedProcess() {
    child_->input.reset();
    posix::killGroupAndReap(child_->pid);
}

bool PipedProcess::write(std::string_view bytes) {
    // A child that has gone would raise SIGPIPE: blocked here, and taken back if it came.
    sigset_t pipeSignal;
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    sigset_t previous;
    pthread_sigmask(SIG_BLOCK, &pipeSignal, &previous);
    bool ok = true;
    while (ok && !bytes.empty()) {
        const ssize_t written = ::write(child_->input.get(), bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(std::size_t(written));
        } else if (errno != EINTR) {
            ok = false;
        }
    }
    if (!ok && errno == EPIPE) {
        const timespec none{};
        sigtimedwait(&pipeSignal, nullptr, &none);
    }
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    return ok;
}

PipedReply PipedProcess::readUntil(std::string_view marker, std::chrono::milliseconds timeLimit,
                                   std::stop_token stop) {
    posix::ReadWait waiter(timeLimit, std::move(stop));
    PipedReply result;
    char buffer[4096];
    for (;;) {
        if (const std::size_t at = pending_.find(marker); at != std::string::npos) {
            result.output = pending_.substr(0, at);
            pending_.erase(0, at + marker.size());
            result.complete = true;
            return result;
        }
        if (const std::optional<CommandEnd> cut = waiter.wait(child_->output.get())) {
            result.end = *cut;
            return result;
        }
        const ssize_t readBytes = ::read(child_->output.get(), buffer, sizeof buffer);
        if (readBytes > 0) {
            pending_.append(buffer, std::size_t(readBytes));
        } else if (readBytes == 0 || errno != EINTR) {
            result.output = std::exchange(pending_, {});
            return result;
        }
    }
}

}  // namespace autoscene::sys

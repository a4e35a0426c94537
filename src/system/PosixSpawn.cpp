// POSIX children are started with posix_spawnp on the split command line, not through
// /bin/sh: glibc reports a program that cannot be executed as the spawn's own error
// (ENOENT for a missing one), which a shell would hide behind exit code 127 and a
// message mixed into the captured output. As on Windows, there are no pipes, redirections
// or variables on the command line; "sh -c '...'" gives them where wanted.

#include "system/PosixSpawn.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <vector>

#include "system/CommandLine.h"

// POSIX leaves declaring it to the program; glibc declares it only for _GNU_SOURCE.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace autoscene::sys::posix {

namespace {

class SpawnFileActions {
public:
    SpawnFileActions() { posix_spawn_file_actions_init(&actions_); }
    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;
    ~SpawnFileActions() { posix_spawn_file_actions_destroy(&actions_); }

    posix_spawn_file_actions_t* get() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

class SpawnAttributes {
public:
    SpawnAttributes() { posix_spawnattr_init(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }

    posix_spawnattr_t* get() { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

}  // namespace

void UniqueFd::reset(int fd) {
    if (fd_ >= 0) {
        ::close(fd_);
    }
    fd_ = fd;
}

Pipe::Pipe() {
    int fds[2] = {-1, -1};
    if (::pipe2(fds, O_CLOEXEC) != 0) {
        throw std::runtime_error("CreatePipe failed");
    }
    readEnd.reset(fds[0]);
    writeEnd.reset(fds[1]);
}

SpawnResult spawn(const std::string& commandLine, int inputFd, int outputFd, Detach detach) {
    std::optional<std::vector<std::string>> words = splitCommandLine(commandLine);
    if (!words || words->empty()) {
        return {0, words ? ENOENT : EINVAL};
    }
    std::vector<char*> argv;
    argv.reserve(words->size() + 1);
    for (std::string& word : *words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    SpawnFileActions actions;
    if (inputFd >= 0) {
        posix_spawn_file_actions_adddup2(actions.get(), inputFd, STDIN_FILENO);
    } else {
        posix_spawn_file_actions_addopen(actions.get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    if (outputFd >= 0) {
        posix_spawn_file_actions_adddup2(actions.get(), outputFd, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(actions.get(), outputFd, STDERR_FILENO);
    } else {
        posix_spawn_file_actions_addopen(actions.get(), STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(actions.get(), STDOUT_FILENO, STDERR_FILENO);
    }
    posix_spawn_file_actions_addclosefrom_np(actions.get(), STDERR_FILENO + 1);

    SpawnAttributes attributes;
    sigset_t noSignals;
    sigemptyset(&noSignals);
    sigset_t allSignals;
    sigfillset(&allSignals);
    posix_spawnattr_setsigmask(attributes.get(), &noSignals);
    posix_spawnattr_setsigdefault(attributes.get(), &allSignals);
    short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    if (detach == Detach::NewSession) {
        flags |= POSIX_SPAWN_SETSID;
    } else {
        flags |= POSIX_SPAWN_SETPGROUP;
        posix_spawnattr_setpgroup(attributes.get(), 0);
    }
    posix_spawnattr_setflags(attributes.get(), flags);

    SpawnResult result;
    result.error =
        posix_spawnp(&result.pid, argv[0], actions.get(), attributes.get(), argv.data(), environ);
    if (result.error != 0) {
        result.pid = 0;
    }
    return result;
}

void reap(pid_t pid) {
    while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void killGroupAndReap(pid_t pid) {
    ::kill(-pid, SIGKILL);
    reap(pid);
}

ReadWait::ReadWait(std::chrono::milliseconds timeLimit, std::stop_token stop)
    : stop_(std::move(stop)), onStop_(stop_, Wake{wake_.writeEnd.get()}) {
    if (timeLimit != std::chrono::milliseconds::max()) {
        deadline_ = std::chrono::steady_clock::now() + timeLimit;
    }
}

void ReadWait::Wake::operator()() const noexcept {
    [[maybe_unused]] const ssize_t written = ::write(fd, "", 1);
}

std::optional<CommandEnd> ReadWait::wait(int fd) {
    for (;;) {
        int waitMs = -1;
        if (deadline_) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(
                *deadline_ - std::chrono::steady_clock::now());
            if (left.count() <= 0) {
                return CommandEnd::TimedOut;
            }
            waitMs = int(std::min<std::int64_t>(left.count(), 60000));
        }
        pollfd watched[2] = {{fd, POLLIN, 0}, {wake_.readEnd.get(), POLLIN, 0}};
        const int ready = ::poll(watched, 2, waitMs);
        if (stop_.stop_requested()) {
            return CommandEnd::Stopped;
        }
        // A failed poll is left to the read that follows to report.
        if ((ready > 0 && watched[0].revents != 0) || (ready < 0 && errno != EINTR)) {
            return std::nullopt;
        }
    }
}

}  // namespace autoscene::sys::posix

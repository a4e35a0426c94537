// POSIX children are started with posix_spawnp on the split command line, not through
// /bin/sh: glibc reports a program that cannot be executed as the spawn's own error
// (ENOENT for a missing one), which a shell would hide behind exit code 127 and a
// message mixed into the captured output. As on Windows, there are no pipes, redirections
// or variables on the command line; "sh -c '...'" gives them where wanted.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <vector>

#include "system/CommandLine.h"
#include "system/Process.h"

// POSIX leaves declaring it to the program; glibc declares it only for _GNU_SOURCE.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace autoscene::sys {

namespace {

class UniqueFd {
public:
    explicit UniqueFd(int fd = -1) : fd_(fd) {}
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd() { reset(); }

    int get() const { return fd_; }
    void reset() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
        fd_ = -1;
    }

private:
    int fd_ = -1;
};

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

struct SpawnResult {
    pid_t pid = 0;
    int error = 0;
};

// A captured child leads a process group of its own, so that ending it ends what it
// started; a hidden one is detached in a session of its own.
enum class Detach { OwnGroup, NewSession };

// stdin is /dev/null; stdout and stderr go to `outputFd`, or to /dev/null when it is -1.
// Every other descriptor is closed in the child, so that a child started by one thread
// never holds the write end of another thread's capture pipe open.
SpawnResult spawn(const std::string& commandLine, int outputFd, Detach detach) {
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
    posix_spawn_file_actions_addopen(actions.get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
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

}  // namespace

std::string runCommandCapture(const std::string& commandLine) {
    return runCommandCapture(commandLine, std::chrono::milliseconds::max(), {}).output;
}

CommandOutput runCommandCapture(const std::string& commandLine, std::chrono::milliseconds timeLimit,
                                std::stop_token stop) {
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> deadline;
    if (timeLimit != std::chrono::milliseconds::max()) {
        deadline = Clock::now() + timeLimit;
    }
    int pipeFds[2] = {-1, -1};
    if (::pipe2(pipeFds, O_CLOEXEC) != 0) {
        throw std::runtime_error("CreatePipe failed");
    }
    UniqueFd readEnd(pipeFds[0]);
    UniqueFd writeEnd(pipeFds[1]);
    // A stop request writes a byte here, which wakes the poll below at once.
    int wakeFds[2] = {-1, -1};
    if (::pipe2(wakeFds, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::runtime_error("CreatePipe failed");
    }
    UniqueFd wakeRead(wakeFds[0]);
    UniqueFd wakeWrite(wakeFds[1]);

    const SpawnResult child = spawn(commandLine, writeEnd.get(), Detach::OwnGroup);
    if (child.error != 0) {
        std::fprintf(stderr, "createProcess err:%d\n", child.error);
        throw std::runtime_error("CreateProcess failed:" + std::to_string(child.error));
    }
    // The read below only ends once no process holds the write end any more.
    writeEnd.reset();
    const std::stop_callback wake(stop, [&wakeWrite] {
        [[maybe_unused]] const ssize_t written = ::write(wakeWrite.get(), "", 1);
    });

    constexpr std::size_t chunkBytes = 1023;
    char buffer[chunkBytes + 1] = {};
    CommandOutput result;
    for (;;) {
        int waitMs = -1;
        if (deadline) {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now());
            if (left.count() <= 0) {
                result.end = CommandEnd::TimedOut;
                break;
            }
            waitMs = int(std::min<std::int64_t>(left.count(), 60000));
        }
        pollfd watched[2] = {{readEnd.get(), POLLIN, 0}, {wakeRead.get(), POLLIN, 0}};
        if (::poll(watched, 2, waitMs) < 0 && errno != EINTR) {
            ::kill(-child.pid, SIGKILL);
            reap(child.pid);
            throw std::runtime_error("ReadFile failed");
        }
        if (stop.stop_requested()) {
            result.end = CommandEnd::Stopped;
            break;
        }
        if (watched[0].revents == 0) {
            continue;
        }
        const ssize_t readBytes = ::read(readEnd.get(), buffer, chunkBytes);
        if (readBytes > 0) {
            result.output.append(buffer, static_cast<std::size_t>(readBytes));
        } else if (readBytes == 0) {
            break;
        } else if (errno != EINTR) {
            ::kill(-child.pid, SIGKILL);
            reap(child.pid);
            throw std::runtime_error("ReadFile failed");
        }
    }
    if (result.end != CommandEnd::Exited) {
        ::kill(-child.pid, SIGKILL);
    }
    // Once the child has closed its output, waiting only collects its exit status.
    reap(child.pid);
    return result;
}

HiddenProcess startHiddenProcess(const std::string& commandLine) {
    const SpawnResult child = spawn(commandLine, -1, Detach::NewSession);
    if (child.error != 0) {
        std::fputs("CreateProcess failed.\n", stdout);
        return {};
    }
    HiddenProcess started;
    started.processId = static_cast<std::uint32_t>(child.pid);
    started.threadId = static_cast<std::uint32_t>(child.pid);
    return started;
}

}  // namespace autoscene::sys

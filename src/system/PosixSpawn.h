#pragma once
// What the POSIX process functions share: descriptors closed on scope exit, starting a
// child and waiting for its output. Internal to system/.

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

#include "system/Process.h"

namespace autoscene::sys::posix {

class UniqueFd {
public:
    explicit UniqueFd(int fd = -1) : fd_(fd) {}
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd() { reset(); }

    int get() const { return fd_; }
    // Closes the descriptor held and holds `fd` instead.
    void reset(int fd = -1);
    int release() { return std::exchange(fd_, -1); }

private:
    int fd_ = -1;
};

// A pipe whose ends are closed on exec; throws "CreatePipe failed".
struct Pipe {
    Pipe();
    UniqueFd readEnd;
    UniqueFd writeEnd;
};

struct SpawnResult {
    pid_t pid = 0;
    int error = 0;
};

// A captured child leads a process group of its own, so that ending it ends what it
// started; a hidden one is detached in a session of its own.
enum class Detach { OwnGroup, NewSession };

// stdin is `inputFd`, or /dev/null when it is -1; stdout and stderr go to `outputFd`, or to
// /dev/null when it is -1. Every other descriptor is closed in the child, so that a child
// started by one thread never holds the write end of another thread's pipe open.
SpawnResult spawn(const std::string& commandLine, int inputFd, int outputFd, Detach detach);

// Kills the child's process group and collects the child.
void killGroupAndReap(pid_t pid);
void reap(pid_t pid);

// Waits for a descriptor to become readable (data or its end), cut short by a deadline
// or a stop request.
class ReadWait {
public:
    // milliseconds::max(): no deadline.
    ReadWait(std::chrono::milliseconds timeLimit, std::stop_token stop);

    // None once `fd` can be read; otherwise why the wait was cut short.
    std::optional<CommandEnd> wait(int fd);

private:
    struct Wake {
        int fd;
        void operator()() const noexcept;
    };

    Pipe wake_;  // a stop request writes a byte here, which wakes the poll at once
    std::optional<std::chrono::steady_clock::time_point> deadline_;
    std::stop_token stop_;
    std::stop_callback<Wake> onStop_;
};

}  // namespace autoscene::sys::posix

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include "system/PosixSpawn.h"
#include "system/Process.h"

namespace autoscene::sys {

using posix::Detach;

std::string runCommandCapture(const std::string& commandLine) {
    return runCommandCapture(commandLine, std::chrono::milliseconds::max(), {}).output;
}

CommandOutput runCommandCapture(const std::string& commandLine, std::chrono::milliseconds timeLimit,
                                std::stop_token stop) {
    posix::ReadWait waiter(timeLimit, std::move(stop));
    posix::Pipe output;
    const posix::SpawnResult child =
        posix::spawn(commandLine, -1, output.writeEnd.get(), Detach::OwnGroup);
    if (child.error != 0) {
        std::fprintf(stderr, "createProcess err:%d\n", child.error);
        throw std::runtime_error("CreateProcess failed:" + std::to_string(child.error));
    }
    // The reads below only end once no process holds the write end any more.
    output.writeEnd.reset();

    constexpr std::size_t chunkBytes = 1023;
    char buffer[chunkBytes + 1] = {};
    CommandOutput result;
    for (;;) {
        if (const std::optional<CommandEnd> cut = waiter.wait(output.readEnd.get())) {
            result.end = *cut;
            posix::killGroupAndReap(child.pid);
            return result;
        }
        const ssize_t readBytes = ::read(output.readEnd.get(), buffer, chunkBytes);
        if (readBytes > 0) {
            result.output.append(buffer, static_cast<std::size_t>(readBytes));
        } else if (readBytes == 0) {
            break;
        } else if (errno != EINTR) {
            posix::killGroupAndReap(child.pid);
            throw std::runtime_error("ReadFile failed");
        }
    }
    // The child has closed its output; waiting now only collects its exit status.
    posix::reap(child.pid);
    return result;
}

HiddenProcess startHiddenProcess(const std::string& commandLine) {
    const posix::SpawnResult child = posix::spawn(commandLine, -1, -1, Detach::NewSession);
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

#include <signal.h>
#include <sys/wait.h>

#include <cerrno>

#include "system/ProcessEnd.h"

namespace autoscene::sys {

void waitForProcessEnd(const HiddenProcess& process) {
    if (!process.started()) {
        return;
    }
    siginfo_t info{};
    // WNOWAIT leaves the child a zombie, which keeps its pid reserved for terminateProcess.
    while (::waitid(P_PID, static_cast<id_t>(process.processId), &info, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

void terminateProcess(const HiddenProcess& process) {
    if (process.started()) {
        ::kill(static_cast<pid_t>(process.processId), SIGTERM);
    }
}

int releaseProcess(const HiddenProcess& process) {
    if (!process.started()) {
        return -1;
    }
    int status = 0;
    pid_t reaped = 0;
    do {
        reaped = ::waitpid(static_cast<pid_t>(process.processId), &status, 0);
    } while (reaped < 0 && errno == EINTR);
    return reaped > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace autoscene::sys

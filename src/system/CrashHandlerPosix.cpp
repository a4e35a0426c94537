// Everything reached from the signal handler is async-signal-safe: open/write/close,
// sigaction, raise, and backtrace/backtrace_symbols_fd once libgcc's unwinder is loaded,
// which installCrashHandler forces by taking one backtrace up front.

#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstring>

#include "system/CrashHandler.h"

namespace autoscene::sys {

namespace {

constexpr int kCrashSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS};
constexpr int kMaxFrames = 64;
constexpr std::size_t kAltStackBytes = std::size_t{64} * 1024;

// A handler for a stack overflow needs a stack of its own.
alignas(16) char altStack[kAltStackBytes];

const char* signalName(int signalNumber) {
    switch (signalNumber) {
        case SIGSEGV:
            return "SIGSEGV";
        case SIGBUS:
            return "SIGBUS";
        case SIGFPE:
            return "SIGFPE";
        case SIGILL:
            return "SIGILL";
        case SIGABRT:
            return "SIGABRT";
        case SIGTRAP:
            return "SIGTRAP";
        case SIGSYS:
            return "SIGSYS";
        default:
            return "signal";
    }
}

void writeText(int fd, const char* text) {
    std::size_t remaining = std::strlen(text);
    while (remaining > 0) {
        const ssize_t written = ::write(fd, text, remaining);
        if (written <= 0) {
            return;
        }
        text += written;
        remaining -= static_cast<std::size_t>(written);
    }
}

// snprintf is not async-signal-safe, hence the hand-made conversion.
void writeNumber(int fd, long value) {
    char digits[24] = {};
    int pos = static_cast<int>(sizeof digits) - 1;
    const bool negative = value < 0;
    unsigned long magnitude =
        negative ? 0UL - static_cast<unsigned long>(value) : static_cast<unsigned long>(value);
    do {
        digits[--pos] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative) {
        digits[--pos] = '-';
    }
    writeText(fd, digits + pos);
}

void writeReport(int signalNumber, const siginfo_t* info) {
    const int fd = ::open("crash.dmp", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        return;
    }
    writeText(fd, "crash: ");
    writeText(fd, signalName(signalNumber));
    writeText(fd, " (signal ");
    writeNumber(fd, signalNumber);
    writeText(fd, ", code ");
    writeNumber(fd, info != nullptr ? info->si_code : 0);
    writeText(fd, ")\npid: ");
    writeNumber(fd, static_cast<long>(::getpid()));
    writeText(fd, "\nbacktrace:\n");
    void* frames[kMaxFrames] = {};
    const int frameCount = ::backtrace(frames, kMaxFrames);
    ::backtrace_symbols_fd(frames, frameCount, fd);
    ::close(fd);
}

void onCrash(int signalNumber, siginfo_t* info, void* /*context*/) {
    writeReport(signalNumber, info);
    // SA_RESETHAND has restored the default action: re-raising ends the process the way
    // the signal would have without this handler (and a fault re-raises on return too).
    ::raise(signalNumber);
}

}  // namespace

void installCrashHandler() {
    void* warmUp[1] = {};
    ::backtrace(warmUp, 1);

    stack_t stack{};
    stack.ss_sp = altStack;
    stack.ss_size = sizeof altStack;
    ::sigaltstack(&stack, nullptr);

    struct sigaction action {};
    action.sa_sigaction = onCrash;
    action.sa_flags = SA_SIGINFO | SA_RESETHAND | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (const int signalNumber : kCrashSignals) {
        ::sigaction(signalNumber, &action, nullptr);
    }
}

}  // namespace autoscene::sys

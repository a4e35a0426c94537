#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>

#include "system/Process.h"

namespace autoscene::sys {
namespace {

constexpr DWORD kReadChunkBytes = 1023;
// Anonymous pipes cannot be waited on together with a stop, so the output is polled: a
// large pipe lets a child write a whole frame between two looks.
constexpr DWORD kPipeBytes = 1 << 20;
constexpr DWORD kPollMs = 10;

// Command lines arrive in the ANSI code page, as the rest of the Windows side uses.
std::wstring commandLineToUtf16(const std::string& commandLine) {
    if (commandLine.empty() || commandLine.size() > 32767) {
        return {};
    }
    const int size = static_cast<int>(commandLine.size());
    const int units = MultiByteToWideChar(CP_ACP, 0, commandLine.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units > 0 ? units : 0), L'\0');
    if (units > 0) {
        MultiByteToWideChar(CP_ACP, 0, commandLine.data(), size, wide.data(), units);
    }
    return wide;
}

void closeAll(std::initializer_list<HANDLE> handles) {
    for (HANDLE handle : handles) {
        if (handle != nullptr) {
            CloseHandle(handle);
        }
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
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof(inheritable);
    inheritable.bInheritHandle = TRUE;
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inheritable, kPipeBytes)) {
        throw std::runtime_error("CreatePipe failed");
    }
    // Only the write end is for the child.
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdOutput = writeEnd;
    startup.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    std::wstring mutableCommand = commandLineToUtf16(commandLine);
    if (!CreateProcessW(nullptr, mutableCommand.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process)) {
        const DWORD error = GetLastError();
        const std::string text = "createProcess err:" + std::to_string(error) + "\n";
        OutputDebugStringA(text.c_str());
        closeAll({readEnd, writeEnd});
        throw std::runtime_error("CreateProcess failed:" + std::to_string(error));
    }
    // Otherwise the pipe would never break: we would hold its write end ourselves.
    CloseHandle(writeEnd);

    CommandOutput result;
    std::array<char, kReadChunkBytes + 1> buffer{};
    for (;;) {
        if (stop.stop_requested()) {
            result.end = CommandEnd::Stopped;
            break;
        }
        if (deadline && Clock::now() >= *deadline) {
            result.end = CommandEnd::TimedOut;
            break;
        }
        DWORD available = 0;
        if (!PeekNamedPipe(readEnd, nullptr, 0, nullptr, &available, nullptr)) {
            if (GetLastError() == ERROR_BROKEN_PIPE) {
                break;
            }
            TerminateProcess(process.hProcess, 1);
            closeAll({readEnd, process.hProcess, process.hThread});
            throw std::runtime_error("ReadFile failed");
        }
        if (available == 0) {
            // Returns early when the child ends; once it has, something it started may
            // still hold the pipe, and only the sleep paces the looks.
            if (WaitForSingleObject(process.hProcess, kPollMs) == WAIT_OBJECT_0) {
                Sleep(kPollMs);
            }
            continue;
        }
        DWORD readBytes = 0;
        if (!ReadFile(readEnd, buffer.data(), std::min(available, kReadChunkBytes), &readBytes,
                      nullptr)) {
            TerminateProcess(process.hProcess, 1);
            closeAll({readEnd, process.hProcess, process.hThread});
            throw std::runtime_error("ReadFile failed");
        }
        result.output.append(buffer.data(), readBytes);
    }
    if (result.end != CommandEnd::Exited) {
        TerminateProcess(process.hProcess, 1);
        WaitForSingleObject(process.hProcess, INFINITE);
    }
    closeAll({readEnd, process.hProcess, process.hThread});
    return result;
}

HiddenProcess startHiddenProcess(const std::string& commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process{};
    std::wstring mutableCommand = commandLineToUtf16(commandLine);
    if (!CreateProcessW(nullptr, mutableCommand.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                        nullptr, nullptr, &startup, &process)) {
        std::fputs("CreateProcess failed.\n", stdout);
        std::fflush(stdout);
        return {};
    }
    HiddenProcess started;
    started.processHandle = reinterpret_cast<std::uintptr_t>(process.hProcess);
    started.threadHandle = reinterpret_cast<std::uintptr_t>(process.hThread);
    started.processId = process.dwProcessId;
    started.threadId = process.dwThreadId;
    return started;
}

}  // namespace autoscene::sys

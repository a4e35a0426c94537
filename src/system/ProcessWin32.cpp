#include <windows.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "system/Process.h"
#include "system/Win32Pipes.h"

namespace autoscene::sys {

std::string runCommandCapture(const std::string& commandLine) {
    return runCommandCapture(commandLine, std::chrono::milliseconds::max(), {}).output;
}

CommandOutput runCommandCapture(const std::string& commandLine, std::chrono::milliseconds timeLimit,
                                std::stop_token stop) {
    const auto deadline = win32::deadlineAfter(timeLimit);
    const win32::PipeEnds output = win32::createPipe(false);
    PROCESS_INFORMATION process{};
    try {
        process = win32::startOnPipes(commandLine, nullptr, output.write);
    } catch (const std::runtime_error&) {
        win32::closeAll({output.read, output.write});
        throw;
    }
    // Otherwise the pipe would never break: we would hold its write end ourselves.
    CloseHandle(output.write);

    CommandOutput result;
    try {
        for (;;) {
            if (const auto cut = win32::cutShort(deadline, stop)) {
                result.end = *cut;
                TerminateProcess(process.hProcess, 1);
                WaitForSingleObject(process.hProcess, INFINITE);
                break;
            }
            if (!win32::readAvailable(output.read, process.hProcess, result.output)) {
                break;
            }
        }
    } catch (const std::runtime_error&) {
        TerminateProcess(process.hProcess, 1);
        win32::closeAll({output.read, process.hProcess, process.hThread});
        throw;
    }
    win32::closeAll({output.read, process.hProcess, process.hThread});
    return result;
}

HiddenProcess startHiddenProcess(const std::string& commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process{};
    std::wstring mutableCommand = win32::commandLineToUtf16(commandLine);
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

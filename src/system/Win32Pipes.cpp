#include "system/Win32Pipes.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace autoscene::sys::win32 {

namespace {

constexpr DWORD kReadChunkBytes = 1023;
// Large enough for a child to write a whole frame between two looks.
constexpr DWORD kPipeBytes = 1 << 20;
constexpr DWORD kPollMs = 10;

}  // namespace

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

PipeEnds createPipe(bool childReads) {
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof(inheritable);
    inheritable.bInheritHandle = TRUE;
    PipeEnds ends;
    if (!CreatePipe(&ends.read, &ends.write, &inheritable, kPipeBytes)) {
        throw std::runtime_error("CreatePipe failed: error " + std::to_string(GetLastError()));
    }
    SetHandleInformation(childReads ? ends.write : ends.read, HANDLE_FLAG_INHERIT, 0);
    return ends;
}

PROCESS_INFORMATION startOnPipes(const std::string& commandLine, HANDLE input, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = output;
    PROCESS_INFORMATION process{};
    std::wstring mutableCommand = commandLineToUtf16(commandLine);
    if (!CreateProcessW(nullptr, mutableCommand.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process)) {
        const DWORD error = GetLastError();
        const std::string text = "createProcess err:" + std::to_string(error) + "\n";
        OutputDebugStringA(text.c_str());
        throw std::runtime_error("CreateProcess failed:" + std::to_string(error));
    }
    return process;
}

bool readAvailable(HANDLE pipe, HANDLE process, std::string& out) {
    DWORD available = 0;
    if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr)) {
        const DWORD error = GetLastError();
        if (error == ERROR_BROKEN_PIPE) {
            return false;
        }
        throw std::runtime_error("ReadFile failed: PeekNamedPipe error " + std::to_string(error));
    }
    if (available == 0) {
        // Returns early when the child ends; once it has, something it started may still
        // hold the pipe, and only the sleep paces the looks.
        if (WaitForSingleObject(process, kPollMs) == WAIT_OBJECT_0) {
            Sleep(kPollMs);
        }
        return true;
    }
    std::array<char, kReadChunkBytes> buffer{};
    DWORD readBytes = 0;
    if (!ReadFile(pipe, buffer.data(), std::min(available, kReadChunkBytes), &readBytes, nullptr)) {
        throw std::runtime_error("ReadFile failed: error " + std::to_string(GetLastError()));
    }
    out.append(buffer.data(), readBytes);
    return true;
}

std::optional<CommandEnd> cutShort(
    const std::optional<std::chrono::steady_clock::time_point>& deadline,
    const std::stop_token& stop) {
    if (stop.stop_requested()) {
        return CommandEnd::Stopped;
    }
    if (deadline && std::chrono::steady_clock::now() >= *deadline) {
        return CommandEnd::TimedOut;
    }
    return std::nullopt;
}

std::optional<std::chrono::steady_clock::time_point> deadlineAfter(
    std::chrono::milliseconds timeLimit) {
    if (timeLimit == std::chrono::milliseconds::max()) {
        return std::nullopt;
    }
    return std::chrono::steady_clock::now() + timeLimit;
}

}  // namespace autoscene::sys::win32

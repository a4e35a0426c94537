#pragma once
// What the Win32 process functions share: command lines in UTF-16, starting a child on
// pipes and polling its output. Internal to system/.

#include <windows.h>

#include <chrono>
#include <initializer_list>
#include <optional>
#include <stop_token>
#include <string>

#include "system/Process.h"

namespace autoscene::sys::win32 {

// Command lines arrive in the ANSI code page, as the rest of the Windows side uses.
std::wstring commandLineToUtf16(const std::string& commandLine);

void closeAll(std::initializer_list<HANDLE> handles);

// Starts `commandLine` hidden with `input` (may be null) as its standard input and
// `output` as its standard output and error; both must be inheritable. Throws
// "CreateProcess failed:<code>".
PROCESS_INFORMATION startOnPipes(const std::string& commandLine, HANDLE input, HANDLE output);

// An anonymous pipe; the end that stays with the caller (the write end when the child
// reads) is not inheritable. Throws "CreatePipe failed: error <code>".
struct PipeEnds {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
};
PipeEnds createPipe(bool childReads);

// Anonymous pipes cannot be waited on together with a stop, so output is polled: appends
// what `pipe` holds to `out`, or waits a little (less once `process` has ended) when it
// holds nothing. False once the pipe is broken; throws "ReadFile failed: …" with
// the failing call and its error code.
bool readAvailable(HANDLE pipe, HANDLE process, std::string& out);

// When a stop or the deadline (none: no limit) ends a wait for output.
std::optional<CommandEnd> cutShort(
    const std::optional<std::chrono::steady_clock::time_point>& deadline,
    const std::stop_token& stop);

std::optional<std::chrono::steady_clock::time_point> deadlineAfter(
    std::chrono::milliseconds timeLimit);

}  // namespace autoscene::sys::win32

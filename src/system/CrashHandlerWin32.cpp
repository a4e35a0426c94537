#include <windows.h>
// dbghelp.h needs windows.h first.
#include <dbghelp.h>

#include "system/CrashHandler.h"

namespace autoscene::sys {
namespace {

// Runs on the crashing thread with the process in an unknown state: no allocation,
// only the calls needed to write the dump.
LONG WINAPI writeCrashDump(EXCEPTION_POINTERS* exception) {
    HANDLE file = CreateFileW(L"crash.dmp", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    MINIDUMP_EXCEPTION_INFORMATION info{};
    info.ThreadId = GetCurrentThreadId();
    info.ExceptionPointers = exception;
    info.ClientPointers = TRUE;
    MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal, &info,
                      nullptr, nullptr);
    CloseHandle(file);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void installCrashHandler() {
    SetUnhandledExceptionFilter(writeCrashDump);
}

}  // namespace autoscene::sys

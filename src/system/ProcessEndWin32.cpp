#include <windows.h>

#include "system/ProcessEnd.h"

namespace autoscene::sys {
namespace {

HANDLE processHandleOf(const HiddenProcess& process) {
    return reinterpret_cast<HANDLE>(process.processHandle);
}

}  // namespace

void waitForProcessEnd(const HiddenProcess& process) {
    if (process.started()) {
        WaitForSingleObject(processHandleOf(process), INFINITE);
    }
}

void terminateProcess(const HiddenProcess& process) {
    if (process.started()) {
        TerminateProcess(processHandleOf(process), 1);
    }
}

int releaseProcess(const HiddenProcess& process) {
    if (!process.started()) {
        return -1;
    }
    HANDLE handle = processHandleOf(process);
    WaitForSingleObject(handle, INFINITE);
    DWORD exitCode = 0;
    const bool known = GetExitCodeProcess(handle, &exitCode) != 0;
    CloseHandle(handle);
    CloseHandle(reinterpret_cast<HANDLE>(process.threadHandle));
    return known ? static_cast<int>(exitCode) : -1;
}

}  // namespace autoscene::sys

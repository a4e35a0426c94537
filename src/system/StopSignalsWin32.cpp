#include <windows.h>

#include <algorithm>

#include "system/StopSignals.h"

namespace autoscene::sys {
namespace {

// Manual-reset, so that every wait after the first request sees it too.
HANDLE stopRequested() {
    static const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return event;
}

// Runs on a thread of its own that the system starts for the console event.
BOOL WINAPI onConsoleEvent(DWORD event) {
    switch (event) {
        case CTRL_C_EVENT:
        case CTRL_BREAK_EVENT:
        case CTRL_CLOSE_EVENT:
            SetEvent(stopRequested());
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

StopSignals::StopSignals() {
    stopRequested();
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

bool StopSignals::wait(std::chrono::milliseconds timeout) {
    const auto ms = static_cast<DWORD>(std::max<std::chrono::milliseconds::rep>(
        0, std::min<std::chrono::milliseconds::rep>(timeout.count(), INFINITE - 1)));
    return WaitForSingleObject(stopRequested(), ms) == WAIT_OBJECT_0;
}

}  // namespace autoscene::sys

#pragma once
// Input by posted window messages, so the target window may stay covered.

#include <windows.h>

#include <mutex>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "desktop/PressedPoints.h"
#include "win32/LogSink.h"

namespace autoscene::platform::win32 {

class BackgroundInput {
public:
    // inputMutex is shared with foreground input; log receives "窗口不存在".
    BackgroundInput(std::mutex& inputMutex, LogSink log);

    void mouse(const InputTarget& target, Point point, MouseOp op, int pressMs);
    void wheel(const InputTarget& target, int steps, Point point);
    void key(const InputTarget& target, int virtualKey, KeyOp op);

    // The named child alone, or the top-level window followed by all its descendants.
    static std::vector<HWND> windowList(const InputTarget& target);

private:
    bool windowExists(const InputTarget& target) const;
    // Posts to every window of the list whose client rectangle, in the top-level
    // window's client coordinates, holds the point; lParam is relative to that window.
    static void postByHitTest(HWND topLevel, const std::vector<HWND>& windows, UINT message,
                              WPARAM wParam, Point point);

    std::mutex& inputMutex_;
    LogSink log_;
    PressedPoints pressedPoints_;
};

}  // namespace autoscene::platform::win32

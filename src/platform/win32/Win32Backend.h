#pragma once
// The Win32 desktop back end: GDI capture, posted messages in the background,
// mouse_event and SendInput in the foreground. Win32 and the standard library only.

#include <mutex>

#include "desktop/DesktopBackend.h"
#include "win32/BackgroundInput.h"
#include "win32/ForegroundInput.h"
#include "win32/LogSink.h"

namespace autoscene::platform::win32 {

class Win32Backend final : public IDesktopBackend {
public:
    // log receives the diagnostic lines ("lpRect:...", "窗口不存在") as UTF-8;
    // without one they go to OutputDebugString.
    explicit Win32Backend(LogSink log = {});

    std::vector<WindowHandle> topLevelWindows() override;
    bool isWindow(WindowHandle window) override;
    WindowInfo describe(WindowHandle window) override;
    bool matches(WindowHandle window, const WindowQuery& query) override;
    WindowHandle findChild(WindowHandle window, const WindowQuery& query) override;

    // Window 0 captures the whole screen on either path.
    BgraFrame capture(WindowHandle window, bool background) override;

    void mouse(const InputTarget& target, Point point, MouseOp op, int pressMs,
               bool background) override;
    void wheel(const InputTarget& target, int steps, Point point, bool background) override;
    // Codes outside 1..254 are logged and ignored.
    void key(const InputTarget& target, int virtualKey, KeyOp op, bool background) override;
    void inputText(const InputTarget& target, const std::string& utf8) override;

    bool resizeClient(WindowHandle window, int width, int height) override;

private:
    LogSink log_;
    std::mutex inputMutex_;
    BackgroundInput background_;
    ForegroundInput foreground_;
};

}  // namespace autoscene::platform::win32

#pragma once
// The desktop target service: capture and input for the whole desktop and for
// windows, through one platform back end. Background mode posts input to the
// window; foreground mode moves the real pointer and keyboard, and only the first
// runner thread may do that.

#include <QString>
#include <atomic>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "engine/TargetService.h"
#include "targets/WindowPlugin.h"

namespace autoscene::targets {

class WindowTarget : public engine::ITargetService {
public:
    struct Modes {
        bool backgroundInput = false;
        bool backgroundCapture = false;
    };

    // `query` names the child window that receives background input, if any.
    WindowTarget(platform::IDesktopBackend& backend, Modes modes, platform::WindowQuery query = {});

    void setEnabled(bool enabled) { enabled_ = enabled; }
    // Window targets capture and take input through the plug-in's services where it offers
    // them. Set before a run; the plug-in must outlive it.
    void setPlugin(IWindowPlugin* plugin) { plugin_ = plugin; }
    // Whether the calling thread may use foreground input.
    bool ownsForegroundInput() const;

    bool capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) override;
    bool isWindow(platform::WindowHandle window) override;
    std::vector<platform::WindowHandle> candidateWindows() override;
    bool displayLost() override { return backend_.displayLost(); }
    void targetStarted(const engine::TaskInfo& task) override;
    void targetEnded(const engine::TaskInfo& task) override;

    // A window target refuses points outside the window's client area.
    QString refusesPoint(const engine::TaskInfo& task, platform::Point point) override;
    void mouse(const engine::TaskInfo& task, platform::Point point, platform::MouseOp op,
               int pressMs) override;
    void wheel(const engine::TaskInfo& task, int steps, platform::Point point) override;
    void key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) override;
    bool keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) override;
    void inputText(const engine::TaskInfo& task, const QString& text) override;

private:
    platform::InputTarget inputTarget(const engine::TaskInfo& task);
    // The plug-in when it serves this target and offers the service.
    IWindowPlugin* pluginFor(const engine::TaskInfo& task, bool (IWindowPlugin::*offers)() const);
    // Where a plug-in sends keys and text: the named child window, or the window.
    platform::WindowHandle keyWindow(const engine::TaskInfo& task);
    // The named child window when the point lies in it, with the point in its client area.
    std::pair<platform::WindowHandle, platform::Point> pluginPoint(const engine::TaskInfo& task,
                                                                   platform::Point point);
    // False when the call must be skipped: a disabled target, a window target whose
    // window is gone, or foreground input on a thread that does not own it.
    bool mayDeliver(const engine::TaskInfo& task, bool foreground) const;

    platform::IDesktopBackend& backend_;
    const Modes modes_;
    const platform::WindowQuery query_;
    std::atomic<bool> enabled_{true};
    IWindowPlugin* plugin_ = nullptr;
    mutable std::mutex threadsMutex_;
    std::vector<std::thread::id> runnerThreads_;  // in the order they started
};

// Accepts the windows whose title and class match the task's window record.
class WindowQueryMatcher : public engine::IWindowMatcher {
public:
    WindowQueryMatcher(platform::IDesktopBackend& backend, platform::WindowQuery query)
        : backend_(backend), query_(std::move(query)) {}
    bool accepts(platform::WindowHandle window) override {
        return backend_.matches(window, query_);
    }

private:
    platform::IDesktopBackend& backend_;
    const platform::WindowQuery query_;
};

}  // namespace autoscene::targets

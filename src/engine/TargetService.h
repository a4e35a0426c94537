#pragma once
// What the engine needs of the targets: capture, window bookkeeping and input. The
// window and device targets implement it; tests use an in-process target.

#include <QString>
#include <vector>

#include "TaskInfo.h"
#include "targets/DesktopBackend.h"

namespace autoscene::engine {

class ITargetService {
public:
    virtual ~ITargetService() = default;

    // Hands the target's current frame (BGRA) to `consume`; false when it cannot be captured.
    virtual bool capture(const TaskInfo& task, const targets::FrameConsumer& consume) = 0;
    virtual bool isWindow(targets::WindowHandle window) = 0;
    // Visible top-level windows of other processes, foreground first, then z-order.
    virtual std::vector<targets::WindowHandle> candidateWindows() = 0;
    virtual void targetStarted(const TaskInfo&) {}
    virtual void targetEnded(const TaskInfo&) {}

    virtual void mouse(const TaskInfo& task, targets::Point point, targets::MouseOp op,
                       int pressMs) = 0;
    virtual void wheel(const TaskInfo& task, int steps, targets::Point point) = 0;
    virtual void key(const TaskInfo& task, int virtualKey, targets::KeyOp op) = 0;
    // Every key down in list order, then every key up in reverse order; entries are Qt
    // modifier codes or virtual keys.
    virtual void keyGroup(const TaskInfo& task, const std::vector<int>& group) = 0;
    virtual void inputText(const TaskInfo& task, const QString& text) = 0;
};

// Decides whether a top-level window is one of the task's targets.
class IWindowMatcher {
public:
    virtual ~IWindowMatcher() = default;
    virtual bool accepts(targets::WindowHandle window) = 0;
};

}  // namespace autoscene::engine

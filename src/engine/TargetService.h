#pragma once
// What the engine needs of the targets: capture, window bookkeeping and input. The
// window and device targets implement it; tests use an in-process target.

#include <QString>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "engine/TaskInfo.h"

namespace autoscene::engine {

class ITargetService {
public:
    virtual ~ITargetService() = default;

    // Hands the target's current frame (BGRA) to `consume`; false when it cannot be captured.
    virtual bool capture(const TaskInfo& task, const platform::FrameConsumer& consume) = 0;
    virtual bool isWindow(platform::WindowHandle window) = 0;
    // Visible top-level windows of other processes, foreground first, then z-order.
    virtual std::vector<platform::WindowHandle> candidateWindows() = 0;
    // True once the display or device connection is gone for good; the run then ends.
    virtual bool displayLost() { return false; }
    // What was lost, for the message that ends the run; empty: the desktop's display.
    virtual QString lostTargetText() { return {}; }
    virtual void targetStarted(const TaskInfo&) {}
    virtual void targetEnded(const TaskInfo&) {}

    // Why mouse input at `point` must not be sent to the task's target (it would reach
    // another program); empty when it may.
    virtual QString refusesPoint(const TaskInfo&, platform::Point) { return {}; }
    // Input at a refused point is dropped.
    virtual void mouse(const TaskInfo& task, platform::Point point, platform::MouseOp op,
                       int pressMs) = 0;
    virtual void wheel(const TaskInfo& task, int steps, platform::Point point) = 0;
    virtual void key(const TaskInfo& task, int virtualKey, platform::KeyOp op) = 0;
    // Every key down in list order, then every key up in reverse order; entries are Qt
    // modifier codes or virtual keys. False when a stop ended the downs early (the keys
    // already down still go up).
    virtual bool keyGroup(const TaskInfo& task, const std::vector<int>& group) = 0;
    virtual void inputText(const TaskInfo& task, const QString& text) = 0;
    // Why input sent to the task's target since the last call did not take effect (the
    // device refused it or could not be reached); empty when all of it did. Clears it.
    virtual QString takeInputError(const TaskInfo&) { return {}; }
    // The characters of `text` that inputText cannot type on this target.
    virtual QString untypableText(const TaskInfo&, const QString&) { return {}; }
    // Starts `package` (its `activity` when one is given) on a device target; an error
    // text, empty when it started.
    virtual QString startApp(const TaskInfo&, const QString&, const QString&) {
        return QStringLiteral("not a device target");
    }
};

// Decides whether a top-level window is one of the task's targets.
class IWindowMatcher {
public:
    virtual ~IWindowMatcher() = default;
    virtual bool accepts(platform::WindowHandle window) = 0;
};

}  // namespace autoscene::engine

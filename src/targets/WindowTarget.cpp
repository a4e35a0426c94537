#include "targets/WindowTarget.h"

#include <QLoggingCategory>
#include <algorithm>

#include "keys/KeyGroupPress.h"

namespace autoscene::targets {

Q_LOGGING_CATEGORY(lcWindowTarget, "autoscene.targets.window")

namespace {

bool hasChildQuery(const platform::WindowQuery& query) {
    return !query.childTitle.empty() || !query.childClassName.empty();
}

}  // namespace

WindowTarget::WindowTarget(platform::IDesktopBackend& backend, Modes modes,
                           platform::WindowQuery query)
    : backend_(backend), modes_(modes), query_(std::move(query)) {}

bool WindowTarget::ownsForegroundInput() const {
    std::lock_guard lock(threadsMutex_);
    return !runnerThreads_.empty() && runnerThreads_.front() == std::this_thread::get_id();
}

bool WindowTarget::mayDeliver(const engine::TaskInfo& task, bool foreground) const {
    // A window target whose window went has nowhere to send input: sent with no window it
    // would reach the desktop.
    const bool windowGone = task.kind == engine::TargetKind::Window && task.window == 0;
    return enabled_ && !windowGone && (!foreground || ownsForegroundInput());
}

bool WindowTarget::capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) {
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::capturesWindows)) {
        return plugin->capture(task.window, consume);
    }
    switch (task.kind) {
        case engine::TargetKind::Desktop:
            return backend_.captureView(0, false, consume);
        case engine::TargetKind::Window: {
            const platform::WindowHandle window = task.window;
            return window && backend_.captureView(window, modes_.backgroundCapture, consume);
        }
        default:
            return false;
    }
}

bool WindowTarget::isWindow(platform::WindowHandle window) {
    return backend_.isWindow(window);
}

std::vector<platform::WindowHandle> WindowTarget::candidateWindows() {
    return backend_.topLevelWindows();
}

void WindowTarget::targetStarted(const engine::TaskInfo& task) {
    {
        std::lock_guard lock(threadsMutex_);
        runnerThreads_.push_back(std::this_thread::get_id());
    }
    if (plugin_ && task.kind == engine::TargetKind::Window) {
        plugin_->targetStarted(task.window);
    }
}

void WindowTarget::targetEnded(const engine::TaskInfo& task) {
    if (plugin_ && task.kind == engine::TargetKind::Window) {
        plugin_->targetEnded(task.window);
    }
    std::lock_guard lock(threadsMutex_);
    std::erase(runnerThreads_, std::this_thread::get_id());
}

IWindowPlugin* WindowTarget::pluginFor(const engine::TaskInfo& task,
                                       bool (IWindowPlugin::*offers)() const) {
    const bool serves = plugin_ && task.kind == engine::TargetKind::Window && task.window;
    return serves && (plugin_->*offers)() ? plugin_ : nullptr;
}

std::pair<platform::WindowHandle, platform::Point> WindowTarget::pluginPoint(
    const engine::TaskInfo& task, platform::Point point) {
    const platform::InputTarget target = inputTarget(task);
    if (!target.child) {
        return {target.window, point};
    }
    const platform::Rect top = backend_.describe(target.window).clientRect;
    const platform::Rect child = backend_.describe(target.child).clientRect;
    const platform::Point inChild{point.x + top.x - child.x, point.y + top.y - child.y};
    const bool inside =
        inChild.x >= 0 && inChild.y >= 0 && inChild.x <= child.width && inChild.y <= child.height;
    return inside ? std::pair{target.child, inChild} : std::pair{target.window, point};
}

platform::WindowHandle WindowTarget::keyWindow(const engine::TaskInfo& task) {
    const platform::InputTarget target = inputTarget(task);
    return target.child ? target.child : target.window;
}

platform::InputTarget WindowTarget::inputTarget(const engine::TaskInfo& task) {
    platform::InputTarget target;
    target.window = task.kind == engine::TargetKind::Window ? task.window.load() : 0;
    if (target.window && hasChildQuery(query_)) {
        target.child = backend_.findChild(target.window, query_);
    }
    return target;
}

QString WindowTarget::refusesPoint(const engine::TaskInfo& task, platform::Point point) {
    const platform::WindowHandle window = task.window;
    if (task.kind != engine::TargetKind::Window) {
        return {};
    }
    if (window == 0) {
        return QStringLiteral("the target window is gone; not sent");
    }
    const platform::Rect client = backend_.describe(window).clientRect;
    if (point.x >= 0 && point.y >= 0 && point.x < client.width && point.y < client.height) {
        return {};
    }
    return QStringLiteral("point %1,%2 is outside the window's %3x%4 client area; not sent")
        .arg(point.x)
        .arg(point.y)
        .arg(client.width)
        .arg(client.height);
}

void WindowTarget::mouse(const engine::TaskInfo& task, platform::Point point, platform::MouseOp op,
                         int pressMs) {
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::handlesMouse)) {
        if (enabled_) {
            const auto [window, at] = pluginPoint(task, point);
            plugin->mouse(window, at, op, pressMs);
        }
        return;
    }
    const bool background = modes_.backgroundInput && task.kind == engine::TargetKind::Window;
    if (!mayDeliver(task, !background)) {
        return;
    }
    // A button up without a point (-1, -1) goes where the button went down.
    const bool placed = point.x != -1 || point.y != -1 || op == platform::MouseOp::Move;
    if (placed && !refusesPoint(task, point).isEmpty()) {
        qCWarning(lcWindowTarget) << "mouse input outside the target window dropped:" << point.x
                                  << point.y;
        return;
    }
    backend_.mouse(inputTarget(task), point, op, pressMs, background);
}

void WindowTarget::wheel(const engine::TaskInfo& task, int steps, platform::Point point) {
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::handlesWheel)) {
        if (enabled_) {
            const auto [window, at] = pluginPoint(task, point);
            plugin->wheel(window, steps, at);
        }
        return;
    }
    const bool background = modes_.backgroundInput && task.kind == engine::TargetKind::Window;
    if (!mayDeliver(task, !background)) {
        return;
    }
    backend_.wheel(inputTarget(task), steps, point, background);
}

void WindowTarget::key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) {
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::handlesKeys)) {
        if (enabled_) {
            plugin->key(keyWindow(task), virtualKey, op);
        }
        return;
    }
    const bool background = modes_.backgroundInput && task.kind == engine::TargetKind::Window;
    if (!mayDeliver(task, !background)) {
        return;
    }
    backend_.key(inputTarget(task), virtualKey, op, background);
}

bool WindowTarget::keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) {
    // A group is pressed only by the thread that owns foreground input, whatever the mode.
    if (!mayDeliver(task, true)) {
        return true;
    }
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::handlesKeys)) {
        const platform::WindowHandle window = keyWindow(task);
        return platform::keys::sendKeyGroup(group, task.stop, [&](int entry, platform::KeyOp op) {
            plugin->key(window, platform::keys::virtualKeyOfGroupEntry(entry), op);
        });
    }
    const bool background = modes_.backgroundInput && task.kind == engine::TargetKind::Window;
    return platform::keys::pressKeyGroup(backend_, inputTarget(task), group, background, task.stop);
}

void WindowTarget::inputText(const engine::TaskInfo& task, const QString& text) {
    if (!mayDeliver(task, false)) {
        return;
    }
    if (IWindowPlugin* plugin = pluginFor(task, &IWindowPlugin::handlesText)) {
        plugin->inputText(keyWindow(task), text);
        return;
    }
    backend_.inputText(inputTarget(task), text.toStdString());
}

}  // namespace autoscene::targets

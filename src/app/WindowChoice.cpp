#include "app/WindowChoice.h"

#include <algorithm>

#include "app/TaskRun.h"

namespace autoscene::app {

namespace {

QString describeQuery(const platform::WindowQuery& query) {
    return QStringLiteral("title \"%1\" (%2) and class \"%3\"")
        .arg(QString::fromStdString(query.title),
             query.fullMatchTitle ? QStringLiteral("whole title") : QStringLiteral("contained"),
             QString::fromStdString(query.className));
}

QString hex(platform::WindowHandle window) {
    return QStringLiteral("0x%1").arg(window, 0, 16);
}

}  // namespace

std::vector<platform::WindowHandle> matchingWindows(platform::IDesktopBackend& backend,
                                                    targets::WindowQueryMatcher& matcher) {
    std::vector<platform::WindowHandle> windows = backend.topLevelWindows();
    std::erase_if(windows, [&](platform::WindowHandle w) { return !matcher.accepts(w); });
    return windows;
}

QString describeWindow(platform::IDesktopBackend& backend, platform::WindowHandle window) {
    const platform::WindowInfo info = backend.describe(window);
    return QStringLiteral("window %1 \"%2\" %3 %4x%5")
        .arg(hex(window), QString::fromStdString(info.title),
             QString::fromStdString(info.className))
        .arg(info.clientRect.width)
        .arg(info.clientRect.height);
}

std::variant<std::vector<engine::RunTarget>, int> chooseWindows(
    const RunOptions& options, const model::WindowInfo& info, platform::IDesktopBackend& backend,
    const platform::WindowQuery& query, targets::WindowQueryMatcher& matcher, QTextStream& err) {
    std::vector<platform::WindowHandle> windows = options.windowIds;
    for (const platform::WindowHandle window : windows) {
        if (!backend.isWindow(window)) {
            err << "no window with id " << hex(window) << '\n';
            return kNoTarget;
        }
    }
    if (windows.empty()) {
        windows = matchingWindows(backend, matcher);
        if (windows.empty()) {
            err << "no window found with " << describeQuery(query) << '\n';
            return kNoTarget;
        }
        if (!options.allWindows) {
            windows.resize(1);
        }
    }
    std::vector<engine::RunTarget> targets;
    for (const platform::WindowHandle window : windows) {
        engine::RunTarget target{engine::TargetKind::Window};
        target.window = window;
        target.child = backend.findChild(window, query);
        target.variableOverrides = options.variables;
        if (info.modifySize && !backend.resizeClient(window, info.width, info.height)) {
            err << "could not resize window " << hex(window) << " to " << info.width << "x"
                << info.height << '\n';
        }
        targets.push_back(std::move(target));
    }
    return targets;
}

}  // namespace autoscene::app

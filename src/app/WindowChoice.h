#pragma once
// Which windows a run drives: the first one the task's window query accepts, every one
// (--all-windows), or the ones named by id (--window-id).

#include <QString>
#include <QTextStream>
#include <variant>
#include <vector>

#include "app/RunOptions.h"
#include "desktop/DesktopBackend.h"
#include "engine/TaskInfo.h"
#include "model/TaskSettings.h"
#include "targets/WindowTarget.h"

namespace autoscene::app {

// The windows the matcher accepts, in candidate order.
std::vector<platform::WindowHandle> matchingWindows(platform::IDesktopBackend& backend,
                                                    targets::WindowQueryMatcher& matcher);

// One line for --list-targets: "window 0x1a00003 "title" class WIDTHxHEIGHT".
QString describeWindow(platform::IDesktopBackend& backend, platform::WindowHandle window);

// The run's window targets, each resized as the task asks; an exit code (said on `err`)
// when a named window does not exist or no window matches.
std::variant<std::vector<engine::RunTarget>, int> chooseWindows(
    const RunOptions& options, const model::WindowInfo& info, platform::IDesktopBackend& backend,
    const platform::WindowQuery& query, targets::WindowQueryMatcher& matcher, QTextStream& err);

}  // namespace autoscene::app

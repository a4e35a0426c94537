#pragma once
// One headless run of a task folder on a desktop back end: what autoscene-run does
// between parsing its command line and exiting.

#include <QTextStream>
#include <chrono>
#include <functional>

#include "app/RunOptions.h"
#include "desktop/DesktopBackend.h"
#include "desktop/WindowControl.h"

namespace autoscene::app {

// Exit codes of a run.
enum RunExitCode : int {
    kRunEnded = 0,
    kBadArguments = 2,
    kNoTarget = 3,
    kDisplayLost = 4,
    kTimeLimit = 124,
};

// Waits up to the given time for the user's request to stop; true when it came.
using StopRequest = std::function<bool(std::chrono::milliseconds)>;

// Whether the task in `folder` has scripts (false when it cannot be opened).
bool taskHasScripts(const QString& folder);

// `windows` serves the window methods of the task's scripts; without it they find nothing.
int runTask(const RunOptions& options, platform::IDesktopBackend& backend, QTextStream& out,
            QTextStream& err, const StopRequest& stopRequested,
            platform::IWindowControl* windows = nullptr);

}  // namespace autoscene::app

#pragma once
// One headless run of a task folder on a desktop back end or on devices: what autoscene-run does
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

// What the scripts of the task in `folder` need of the program (nothing when the task
// cannot be opened).
struct ScriptNeeds {
    bool windows = false;    // the window methods: any script may call them
    bool clipboard = false;  // a script may use the clipboard
};
ScriptNeeds taskScriptNeeds(const QString& folder);

struct RunIo {
    QTextStream& out;
    QTextStream& err;
    StopRequest stopRequested;
    // Serves the window methods of the task's scripts; without it they find nothing.
    platform::IWindowControl* windows = nullptr;
};

// `backend` is null when the display could not be opened: devices can still be driven.
int runTask(const RunOptions& options, platform::IDesktopBackend* backend, const RunIo& io);

}  // namespace autoscene::app

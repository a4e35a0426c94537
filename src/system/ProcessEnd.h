#pragma once
// Waiting for and ending a process started by startHiddenProcess. The wait does not
// release the process, so another thread may still terminate it safely (its id cannot
// be reused) until releaseProcess. ProcessEndPosix.cpp and ProcessEndWin32.cpp.

#include "system/Process.h"

namespace autoscene::sys {

// Blocks until `process` has ended; returns at once for one that never started.
void waitForProcessEnd(const HiddenProcess& process);

// Asks `process` to end (SIGTERM; TerminateProcess on Windows). Harmless once ended.
void terminateProcess(const HiddenProcess& process);

// Frees what is left of an ended process and returns its exit code, or -1 when it
// was ended by a signal or never started.
int releaseProcess(const HiddenProcess& process);

}  // namespace autoscene::sys

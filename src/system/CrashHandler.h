#pragma once
// Writes "crash.dmp" into the current directory when the process crashes, then
// lets the system's own handling follow (a second crash replaces the dump).
// Windows: a normal minidump from an unhandled-exception filter. POSIX: a readable
// report (signal and backtrace) written with async-signal-safe calls only.

namespace autoscene::sys {

void installCrashHandler();

}  // namespace autoscene::sys

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include "app/ReplayRun.h"
#include "system/CrashHandler.h"
#include "system/StopSignals.h"

int main(int argc, char* argv[]) {
    autoscene::sys::installCrashHandler();
    // Before any thread exists, so that only the waiting main thread sees Ctrl+C.
    autoscene::sys::StopSignals stopSignals;
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    return autoscene::app::replayRecording(
        arguments,
        {out, err, [&](std::chrono::milliseconds timeout) { return stopSignals.wait(timeout); }});
}

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include "app/RunOptions.h"
#include "app/TaskRun.h"
#include "system/CrashHandler.h"
#include "system/StopSignals.h"
#include "x11/X11Backend.h"
#include "x11/X11WindowControl.h"

Q_LOGGING_CATEGORY(lcDesktop, "autoscene.targets.x11")

int main(int argc, char* argv[]) {
    autoscene::sys::installCrashHandler();
    // Before any thread exists, so that only the waiting main thread sees Ctrl+C.
    autoscene::sys::StopSignals stopSignals;
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const autoscene::app::ParsedRunOptions parsed = autoscene::app::parseRunOptions(arguments);
    // A task whose scripts may use the clipboard runs in a GUI application where the display
    // opens (QClipboard needs one). Other tasks do without: Qt's own connection to the
    // display ends the program when the server goes away, before the run can say that the
    // display was lost.
    const autoscene::app::ScriptNeeds needs =
        parsed.options ? autoscene::app::taskScriptNeeds(parsed.options->taskFolder)
                       : autoscene::app::ScriptNeeds{};
    const auto windows =
        needs.windows ? autoscene::platform::makeX11WindowControl(nullptr) : nullptr;
    const std::unique_ptr<QCoreApplication> app =
        windows && needs.clipboard ? std::make_unique<QGuiApplication>(argc, argv)
                                   : std::make_unique<QCoreApplication>(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    if (!parsed.options) {
        (parsed.exitCode == 0 ? out : err) << parsed.message << '\n';
        return parsed.exitCode;
    }
    if (!parsed.options->verbose) {
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    }
    // After the application: it takes back the process-wide Xlib error handlers from Qt's.
    const auto backend = autoscene::platform::makeX11Backend(
        nullptr, [](const std::string& line) { qCDebug(lcDesktop).noquote() << line.c_str(); });
    return autoscene::app::runTask(
        *parsed.options, backend.get(),
        {out, err, [&](std::chrono::milliseconds timeout) { return stopSignals.wait(timeout); },
         windows.get()});
}

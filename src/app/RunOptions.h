#pragma once
// Command line of the headless runner.

#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace autoscene::app {

struct RunOptions {
    QString taskFolder;
    std::optional<QString> windowTitle;  // replaces the task's window title; full match
    std::optional<QString> className;    // replaces the task's window class
    bool fullScreen = false;
    std::optional<bool> background;  // both background input and capture; the task's own else
    int timeLimitSeconds = -1;       // -1: none
    std::optional<int> loopMode;
    std::optional<int> loopIntervalMs;
    std::map<int, QString> variables;  // start values by definition id
    bool json = false;
    bool verbose = false;                  // the diagnostic log on stderr
    bool trace = false;                    // each cycle's scene and condition states on the output
    QString saveFrame;                     // PNG written with the last frame when the run ends
    QString recordFolder;                  // a new recording of the run goes there
    std::optional<int> ocrPort;            // replaces the port of ocr.ini
    bool allWindows = false;               // every window the task matches, one worker each
    std::vector<std::uint64_t> windowIds;  // these windows, whatever the task matches
    bool listTargets = false;              // print what would be driven and exit
    QStringList devices;                   // adb serials to run on
    bool allDevices = false;
    QString adbProgram;  // empty: adb on the search path, else adb/adb beside the program
    QString deviceRoute = QStringLiteral("auto");  // auto, service or adb
    QString deviceService;                         // empty: adb/localservice.jar beside the program
    int adbTimeoutSeconds = 10;                    // an adb call that takes longer is ended
    int deviceLostSeconds = 30;  // a device missing from adb devices this long ends the run

    bool namesDevices() const { return allDevices || !devices.isEmpty(); }
};

struct ParsedRunOptions {
    std::optional<RunOptions> options;  // none: exit with `exitCode` after printing `message`
    int exitCode = 0;
    QString message;
};

ParsedRunOptions parseRunOptions(const QStringList& arguments);

}  // namespace autoscene::app

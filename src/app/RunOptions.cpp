#include "app/RunOptions.h"

#include <QCommandLineParser>

namespace autoscene::app {

namespace {

constexpr int kBadArguments = 2;

ParsedRunOptions failure(const QString& message) {
    return {std::nullopt, kBadArguments, message};
}

std::optional<int> parseInt(const QString& text, int min, int max) {
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && value >= min && value <= max ? std::optional<int>(value) : std::nullopt;
}

}  // namespace

ParsedRunOptions parseRunOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Runs a task folder (holding script.json, image/ and ori/) on a desktop window, the "
        "whole desktop or Android devices, printing scene changes, fired events and action results "
        "as it goes.\n"
        "Exit codes: 0 the run ended (stop action or Ctrl+C), 124 the time limit ended it, "
        "2 bad arguments or a task that cannot be opened, 3 no target window or ADB device "
        "found, 4 the display was lost.");
    parser.addHelpOption();
    parser.addPositionalArgument("TASK_DIR", "The task folder.");
    const QCommandLineOption window("window", "Drive the window whose title is exactly TITLE.",
                                    "TITLE");
    const QCommandLineOption className("class", "Drive a window of class NAME (WM_CLASS).", "NAME");
    const QCommandLineOption fullScreen("full-screen", "Drive the whole desktop.");
    const QCommandLineOption background(
        "background",
        "Capture the window's own contents and send synthetic input, so the "
        "window may be covered.");
    const QCommandLineOption foreground(
        "foreground", "Capture the screen and send real input after raising the window.");
    const QCommandLineOption timeLimit("time-limit", "End the run after SECONDS (exit 124).",
                                       "SECONDS");
    const QCommandLineOption loopMode(
        "loop-mode", "1: every event of a scene per cycle; 2: one event per cycle.", "MODE");
    const QCommandLineOption loopInterval("loop-interval", "Pause before every cycle.", "MS");
    const QCommandLineOption variable("var", "Start variable ID with VALUE (repeatable).",
                                      "ID=VALUE");
    const QCommandLineOption json("json", "Print one JSON object per line.");
    const QCommandLineOption saveFrame("save-frame", "Save the last captured frame as a PNG.",
                                       "FILE");
    const QCommandLineOption record(
        "record", "Record the run into the new or empty folder DIR (autoscene-replay reads it).",
        "DIR");
    const QCommandLineOption verbose("verbose", "Print the diagnostic log on stderr.");
    const QCommandLineOption device(
        "device", "Drive the Android device SERIAL through adb (repeatable).", "SERIAL");
    const QCommandLineOption allDevices("all-devices",
                                        "Drive every device that adb lists in state \"device\".");
    const QCommandLineOption adb("adb", "The adb program to use.", "PATH");
    const QCommandLineOption deviceRoute(
        "device-route",
        "How devices are driven: service (the device service), adb (adb alone) or auto "
        "(the service when its file is there and it answers, adb otherwise; the default).",
        "ROUTE");
    const QCommandLineOption deviceService(
        "device-service",
        "The device service's file (default adb/localservice.jar beside the program).", "FILE");
    const QCommandLineOption adbTimeout(
        "adb-timeout", "End an adb call that takes longer than SECONDS (default 10).", "SECONDS");
    const QCommandLineOption deviceLost(
        "device-lost",
        "End the run (exit 4) once a device has been missing from adb devices for SECONDS "
        "(default 30).",
        "SECONDS");
    const QCommandLineOption trace(
        "trace",
        "Print, every cycle, the scene chosen and the state of every evaluated condition "
        "(scores, counts, places, errors), also of scenes that are not recognised.");
    const QCommandLineOption allWindows(
        "all-windows", "Drive every window the task matches, one worker thread each.");
    const QCommandLineOption windowId(
        "window-id", "Drive the window with this id (decimal or 0x hex; repeatable).", "ID");
    const QCommandLineOption listTargets(
        "list-targets", "Print the windows the task would drive, and exit (3: none).");
    const QCommandLineOption ocrPort(
        "ocr-port", "Start the text-recognition service on PORT instead of ocr.ini's.", "PORT");
    parser.addOptions({window,      className,     fullScreen,   background, foreground,
                       timeLimit,   loopMode,      loopInterval, variable,   json,
                       saveFrame,   verbose,       trace,        ocrPort,    allWindows,
                       windowId,    listTargets,   device,       allDevices, adb,
                       deviceRoute, deviceService, adbTimeout,   deviceLost, record});

    QStringList withProgram = arguments;
    withProgram.prepend("autoscene-run");
    if (!parser.parse(withProgram)) {
        return failure(parser.errorText());
    }
    if (parser.isSet("help")) {
        return {std::nullopt, 0, parser.helpText()};
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1) {
        return failure(QStringLiteral("expected one task folder\n\n") + parser.helpText());
    }

    RunOptions options;
    options.taskFolder = positional.front();
    if (parser.isSet(window)) {
        options.windowTitle = parser.value(window);
    }
    if (parser.isSet(className)) {
        options.className = parser.value(className);
    }
    options.fullScreen = parser.isSet(fullScreen);
    if (options.fullScreen && (options.windowTitle || options.className)) {
        return failure("--full-screen cannot be combined with --window or --class");
    }
    if (parser.isSet(background) && parser.isSet(foreground)) {
        return failure("--background and --foreground exclude each other");
    }
    if (parser.isSet(background) || parser.isSet(foreground)) {
        options.background = parser.isSet(background);
    }
    if (parser.isSet(timeLimit)) {
        const auto seconds = parseInt(parser.value(timeLimit), 0, 100 * 24 * 3600);
        if (!seconds) {
            return failure("--time-limit needs a whole number of seconds: " +
                           parser.value(timeLimit));
        }
        options.timeLimitSeconds = *seconds;
    }
    if (parser.isSet(loopMode)) {
        options.loopMode = parseInt(parser.value(loopMode), 1, 2);
        if (!options.loopMode) {
            return failure("--loop-mode is 1 or 2: " + parser.value(loopMode));
        }
    }
    if (parser.isSet(loopInterval)) {
        options.loopIntervalMs = parseInt(parser.value(loopInterval), 0, 24 * 3600 * 1000);
        if (!options.loopIntervalMs) {
            return failure("--loop-interval needs milliseconds: " + parser.value(loopInterval));
        }
    }
    for (const QString& assignment : parser.values(variable)) {
        const qsizetype equals = assignment.indexOf('=');
        const auto id = parseInt(assignment.left(equals), 1, INT32_MAX);
        if (equals < 0 || !id) {
            return failure("--var needs ID=VALUE with a numeric id: " + assignment);
        }
        options.variables[*id] = assignment.mid(equals + 1);
    }
    if (parser.isSet(ocrPort)) {
        options.ocrPort = parseInt(parser.value(ocrPort), 1, 65535);
        if (!options.ocrPort) {
            return failure("--ocr-port needs a port from 1 to 65535: " + parser.value(ocrPort));
        }
    }
    for (const QString& text : parser.values(windowId)) {
        bool ok = false;
        const qulonglong id = text.toULongLong(&ok, 0);
        if (!ok || id == 0) {
            return failure("--window-id needs a window id: " + text);
        }
        options.windowIds.push_back(id);
    }
    options.allWindows = parser.isSet(allWindows);
    options.listTargets = parser.isSet(listTargets);
    if (options.fullScreen && (options.allWindows || !options.windowIds.empty())) {
        return failure("--full-screen cannot be combined with --all-windows or --window-id");
    }
    options.devices = parser.values(device);
    options.allDevices = parser.isSet(allDevices);
    options.adbProgram = parser.value(adb);
    if (options.namesDevices() && (options.fullScreen || options.windowTitle || options.className ||
                                   options.allWindows || !options.windowIds.empty())) {
        return failure(
            "--device and --all-devices cannot be combined with a window or the desktop");
    }
    if (parser.isSet(deviceRoute)) {
        options.deviceRoute = parser.value(deviceRoute);
        if (!QStringList{"auto", "service", "adb"}.contains(options.deviceRoute)) {
            return failure("--device-route is auto, service or adb: " + options.deviceRoute);
        }
    }
    options.deviceService = parser.value(deviceService);
    for (const auto& [option, seconds] : {std::pair{&adbTimeout, &options.adbTimeoutSeconds},
                                          {&deviceLost, &options.deviceLostSeconds}}) {
        if (parser.isSet(*option)) {
            const auto value = parseInt(parser.value(*option), 1, 24 * 3600);
            if (!value) {
                return failure("--" + option->names().front() +
                               " needs a whole number of seconds from 1: " + parser.value(*option));
            }
            *seconds = *value;
        }
    }
    options.json = parser.isSet(json);
    options.verbose = parser.isSet(verbose);
    options.trace = parser.isSet(trace);
    options.saveFrame = parser.value(saveFrame);
    options.recordFolder = parser.value(record);
    return {std::move(options), 0, {}};
}

}  // namespace autoscene::app

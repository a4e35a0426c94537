#include "app/ReplayRun.h"

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <variant>

#include "app/RunSession.h"
#include "model/TaskDocument.h"
#include "playback/RecordingLayout.h"
#include "playback/ReplayTarget.h"
#include "playback/Replayer.h"

namespace autoscene::app {

namespace {

struct ReplayOptions {
    QString recording;
    QString taskFolder;
    bool json = false;
};

// The options, or the exit code after saying why there are none.
std::variant<ReplayOptions, int> parseOptions(const QStringList& arguments, const RunIo& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Replays a recording of autoscene-run --record: evaluates the task on the recorded "
        "frames, each cycle from the recorded state, sending no input, and prints every "
        "difference in scene, condition result and event fired. Exit 0: none, 1: some, 2: bad "
        "input.");
    parser.addHelpOption();
    parser.addPositionalArgument("RECORDING", "The recording's folder.");
    const QCommandLineOption task("task", "Replay this task instead of the recorded one.",
                                  "TASK_DIR");
    const QCommandLineOption json("json", "Print one JSON object per line.");
    parser.addOptions({task, json});
    if (!parser.parse(QStringList{"autoscene-replay"} + arguments)) {
        io.err << parser.errorText() << '\n';
        return kBadReplayInput;
    }
    if (parser.isSet("help")) {
        io.out << parser.helpText();
        return kSameDecisions;
    }
    if (parser.positionalArguments().size() != 1) {
        io.err << "name one recording folder (--help lists the options)\n";
        return kBadReplayInput;
    }
    ReplayOptions options;
    options.recording = parser.positionalArguments().front();
    options.taskFolder = parser.isSet(task)
                             ? parser.value(task)
                             : QDir(options.recording).filePath(playback::kTaskFolder);
    options.json = parser.isSet(json);
    return options;
}

QString sceneName(const QJsonValue& scene) {
    return scene.isString() ? QStringLiteral("\"%1\"").arg(scene.toString())
                            : QStringLiteral("none");
}

QString compact(const QJsonValue& value) {
    return value.isObject()
               ? QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact))
               : QStringLiteral("not evaluated");
}

QString outcomeWord(const QJsonValue& outcome) {
    if (!outcome.isObject()) {
        return QStringLiteral("not evaluated");
    }
    return outcome.toObject()["holds"].toBool() ? QStringLiteral("holds") : QStringLiteral("fails");
}

QString describe(const QJsonObject& difference) {
    const QString kind = difference["kind"].toString();
    const QString scene = difference["scene"].toString();
    if (kind == QStringLiteral("scene")) {
        return QStringLiteral("scene %1 → %2")
            .arg(sceneName(difference["old"]), sceneName(difference["new"]));
    }
    if (kind == QStringLiteral("condition")) {
        const bool identification = difference.contains("identification");
        return QStringLiteral("%1 \"%2\" of scene \"%3\": %4 → %5\n      old: %6\n      new: %7")
            .arg(identification ? QStringLiteral("identification") : QStringLiteral("event"),
                 difference[identification ? "identification" : "event"].toString(), scene,
                 outcomeWord(difference["old"]), outcomeWord(difference["new"]),
                 compact(difference["old"]), compact(difference["new"]));
    }
    if (kind == QStringLiteral("event")) {
        const QString what = difference["entered"].toBool()
                                 ? QStringLiteral("entering scene \"%1\"").arg(scene)
                                 : QStringLiteral("event \"%1\" of scene \"%2\"")
                                       .arg(difference["event"].toString(), scene);
        return what + (difference["fires_now"].toBool() ? QStringLiteral(" now fires")
                                                        : QStringLiteral(" no longer fires"));
    }
    return QStringLiteral(
               "the replay ended before this cycle (the task stopped); %1 recorded "
               "cycles were not replayed")
        .arg(difference["recorded_cycles_left"].toInt());
}

// How long the recorded run took, from its first worker's start to its last cycle.
double recordedSeconds(const playback::Recording& recording) {
    if (recording.cycles.empty()) {
        return 0;
    }
    std::int64_t first = recording.cycles.front().timeMs;
    std::int64_t last = first;
    for (const playback::RecordedCycle& cycle : recording.cycles) {
        const QJsonObject start = cycle.line["start"].toObject();
        first = std::min(first, std::int64_t(start["time_ms"].toDouble(double(cycle.timeMs))));
        last = std::max(last, cycle.timeMs);
    }
    return double(last - first) / 1000.0;
}

void print(const RunIo& io, bool json, const QJsonObject& line, const QString& text) {
    if (json) {
        io.out << QJsonDocument(line).toJson(QJsonDocument::Compact) << '\n';
    } else {
        io.out << text << '\n';
    }
}

}  // namespace

int replayRecording(const QStringList& arguments, const RunIo& io) {
    const auto parsed = parseOptions(arguments, io);
    if (const int* code = std::get_if<int>(&parsed)) {
        return *code;
    }
    const auto& options = std::get<ReplayOptions>(parsed);
    QString error;
    const auto recording = playback::readRecording(options.recording, &error);
    if (!recording) {
        io.err << error << '\n';
        return kBadReplayInput;
    }
    if (!recording->warning.isEmpty()) {
        io.err << recording->warning << '\n';
    }
    model::TaskDocument task;
    if (!QFileInfo(options.taskFolder + "/script.json").isFile()) {
        io.err << "no script.json in " << options.taskFolder << '\n';
        return kBadReplayInput;
    }
    if (const model::OpenResult opened = task.openFolder(options.taskFolder); !opened.ok) {
        io.err << "cannot open " << options.taskFolder << ": " << opened.error << '\n';
        return kBadReplayInput;
    }
    playback::ReplayTarget target;
    auto clock = std::make_shared<playback::ReplayClock>();
    RunSession session(task, target, nullptr, clock);
    if (!session.startOcrService()) {
        io.err << "morvane-ocr is neither beside autoscene-replay nor in the working directory: "
                  "screen text reads as empty\n";
    }
    QElapsedTimer elapsed;
    elapsed.start();
    playback::Replayer replayer(session.runner(), target, *clock);
    const playback::ReplayResult result = replayer.replay(*recording, io.stopRequested);
    const double seconds = double(elapsed.nsecsElapsed()) / 1e9;
    if (!result.error.isEmpty()) {
        io.err << result.error << '\n';
        return kBadReplayInput;
    }
    for (const playback::CycleDifferences& differing : result.cycles) {
        const playback::RecordedCycle& cycle = *differing.cycle;
        QStringList lines{QStringLiteral("cycle %1 of target %2 (%3:%4):")
                              .arg(cycle.cycle)
                              .arg(cycle.target)
                              .arg(playback::kCyclesFile)
                              .arg(cycle.lineNumber)};
        for (const auto& difference : differing.differences) {
            lines << QStringLiteral("  ") + describe(difference.toObject());
        }
        print(io, options.json,
              {{"type", "difference"},
               {"target", cycle.target},
               {"cycle", double(cycle.cycle)},
               {"line", cycle.lineNumber},
               {"differences", differing.differences}},
              lines.join('\n'));
    }
    const double recorded = recordedSeconds(*recording);
    const double speed = seconds > 0 ? recorded / seconds : 0;
    print(io, options.json,
          {{"type", "summary"},
           {"cycles", double(result.replayed)},
           {"skipped", double(result.skipped)},
           {"differing_cycles", int(result.cycles.size())},
           {"seconds", seconds},
           {"recorded_seconds", recorded},
           {"speed", speed},
           {"interrupted", result.interrupted}},
          QStringLiteral("%1%2 cycles replayed (%3 without their dropped frame), %4 differ; %5 s "
                         "for a run of %6 s (%7x)")
              .arg(result.interrupted ? QStringLiteral("interrupted: ") : QString())
              .arg(result.replayed)
              .arg(result.skipped)
              .arg(result.cycles.size())
              .arg(seconds, 0, 'f', 2)
              .arg(recorded, 0, 'f', 2)
              .arg(speed, 0, 'f', 1));
    io.out.flush();
    if (result.interrupted) {
        return kReplayInterrupted;
    }
    return result.cycles.empty() ? kSameDecisions : kDecisionsDiffer;
}

}  // namespace autoscene::app

#include "playback/RecordingReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <map>

#include "playback/RecordingLayout.h"

namespace autoscene::playback {

namespace {

// What is wrong with a cycle line, or empty.
QString checkCycle(const QJsonObject& line, const QDir& folder, RecordedCycle& cycle) {
    static const QRegularExpression framePath(QStringLiteral("^frames/[0-9]+-[0-9]+\\.png$"));
    if (line["type"] != QStringLiteral("cycle")) {
        return QStringLiteral("not a cycle record");
    }
    for (const char* number : {"target", "cycle", "time_ms"}) {
        if (!line[number].isDouble()) {
            return QStringLiteral("\"%1\" is not a number").arg(number);
        }
    }
    if (!line["scene"].isString() && !line["scene"].isNull()) {
        return QStringLiteral("\"scene\" is neither a name nor null");
    }
    if (!line["checks"].isArray() || !line["fired"].isArray() || !line["state"].isObject()) {
        return QStringLiteral("\"checks\", \"fired\" or \"state\" is missing");
    }
    cycle.target = line["target"].toInt();
    cycle.cycle = std::int64_t(line["cycle"].toDouble());
    cycle.timeMs = std::int64_t(line["time_ms"].toDouble());
    cycle.frameDropped = line["frame_dropped"].toBool();
    if (line["frame"].isString()) {
        cycle.frame = line["frame"].toString();
        if (!framePath.match(cycle.frame).hasMatch()) {
            return QStringLiteral("frame \"%1\" is not a file under frames/").arg(cycle.frame);
        }
        if (!QFileInfo(folder.filePath(cycle.frame)).isFile()) {
            return QStringLiteral("frame %1 is missing").arg(cycle.frame);
        }
    } else if (!line["frame"].isNull()) {
        return QStringLiteral("\"frame\" is neither a file name nor null");
    }
    cycle.line = line;
    return {};
}

}  // namespace

// A line that repeats an earlier cycle of its target ("same_as") as that cycle's line with
// its own cycle and time; what is wrong with it otherwise.
QString expandRepeat(const QJsonObject& line, const std::map<int, QJsonObject>& lastFull,
                     QJsonObject& expanded) {
    const auto full = lastFull.find(line["target"].toInt());
    if (!line["same_as"].isDouble() || full == lastFull.end() ||
        full->second["cycle"] != line["same_as"]) {
        return QStringLiteral("\"same_as\" names no earlier cycle of its target");
    }
    expanded = full->second;
    expanded.remove("start");
    expanded.insert("cycle", line["cycle"]);
    expanded.insert("time_ms", line["time_ms"]);
    return {};
}

std::optional<Recording> readRecording(const QString& folder, QString* error) {
    const QDir dir(folder);
    QFile file(dir.filePath(kCyclesFile));
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.fileName() + QStringLiteral(": ") + file.errorString();
        return std::nullopt;
    }
    Recording recording{folder, {}, {}};
    std::map<int, QJsonObject> lastFull;  // by target
    int number = 0;
    while (!file.atEnd()) {
        const QByteArray text = file.readLine();
        ++number;
        const auto failure = [&](const QString& what) {
            *error = QStringLiteral("%1:%2: %3").arg(file.fileName()).arg(number).arg(what);
            return std::nullopt;
        };
        if (!text.endsWith('\n')) {
            recording.warning = QStringLiteral(
                                    "%1:%2: the line is cut short (the run ended while "
                                    "writing it); the %3 cycles before it are read")
                                    .arg(file.fileName())
                                    .arg(number)
                                    .arg(recording.cycles.size());
            break;
        }
        QJsonParseError parse;
        const QJsonDocument document = QJsonDocument::fromJson(text, &parse);
        if (!document.isObject()) {
            return failure(parse.error != QJsonParseError::NoError
                               ? QStringLiteral("not JSON: %1 at byte %2")
                                     .arg(parse.errorString())
                                     .arg(parse.offset)
                               : QStringLiteral("not a JSON object"));
        }
        QJsonObject line = document.object();
        if (number == 1) {
            if (line["type"] != QStringLiteral("recording") ||
                line["version"].toInt() != kRecordingVersion) {
                return failure(QStringLiteral("not a recording of version %1: the first line "
                                              "is not its header")
                                   .arg(kRecordingVersion));
            }
            continue;
        }
        const bool repeat = line.contains("same_as");
        if (repeat) {
            const QJsonObject reference = line;
            if (const QString wrong = expandRepeat(reference, lastFull, line); !wrong.isEmpty()) {
                return failure(wrong);
            }
        }
        RecordedCycle cycle;
        cycle.lineNumber = number;
        if (const QString wrong = checkCycle(line, dir, cycle); !wrong.isEmpty()) {
            return failure(wrong);
        }
        if (!repeat) {
            lastFull[cycle.target] = line;
        }
        recording.cycles.push_back(std::move(cycle));
    }
    if (number == 0) {
        *error = file.fileName() + QStringLiteral(": empty, not a recording");
        return std::nullopt;
    }
    return recording;
}

}  // namespace autoscene::playback

// How long the playback window takes to open a recording of 1 000, 10 000 and 100 000 cycles
// and to show one of its cycles, on Qt's offscreen platform. The recordings are a real one's
// cycles repeated (its frames shared): playback_open_bench RECORDING (from autoscene-run
// --record). Prints a table with each size's times against the smallest one's.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <cstdio>

#include "editor/TaskEditor.h"
#include "ui/playback/PlaybackWindow.h"

namespace {

// A recording in `folder` of `cycles` cycles of one target, the source's full cycle lines
// over and over with their frames.
bool repeatRecording(const QString& source, const QString& folder, int cycles) {
    QFile in(QDir(source).filePath("cycles.jsonl"));
    if (!in.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray header = in.readLine();
    std::vector<QJsonObject> lines;
    while (!in.atEnd()) {
        const QJsonObject line = QJsonDocument::fromJson(in.readLine()).object();
        if (!line.contains("same_as") && line["target"].toInt() == 1) {
            lines.push_back(line);
        }
    }
    QDir(folder).mkpath("frames");
    for (const QString& frame : QDir(QDir(source).filePath("frames")).entryList(QDir::Files)) {
        QFile::link(QDir(source).filePath("frames/" + frame),
                    QDir(folder).filePath("frames/" + frame));
    }
    QFile out(QDir(folder).filePath("cycles.jsonl"));
    if (lines.empty() || !out.open(QIODevice::WriteOnly)) {
        return false;
    }
    out.write(header);
    for (int cycle = 0; cycle < cycles; ++cycle) {
        QJsonObject line = lines[size_t(cycle) % lines.size()];
        if (cycle > 0) {
            line.remove("start");
        }
        line["cycle"] = cycle;
        line["time_ms"] = 1e12 + cycle * 10.0;
        out.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    }
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s RECORDING\n", argv[0]);
        return 2;
    }
    autoscene::ui::TaskEditor editor;
    QTemporaryDir empty;
    autoscene::ui::PlaybackWindow window(editor, empty.path());
    std::printf("%-10s %12s %16s %14s\n", "cycles", "open ms", "open vs 1 000", "show cycle ms");
    double first = 0;
    for (const int cycles : {1000, 10000, 100000}) {
        QTemporaryDir folder;
        if (!repeatRecording(QString::fromLocal8Bit(argv[1]), folder.path(), cycles)) {
            std::fprintf(stderr, "%s holds no recording\n", argv[1]);
            return 2;
        }
        QElapsedTimer clock;
        clock.start();
        if (!window.openRecording(folder.path())) {
            return 1;
        }
        const double open = double(clock.nsecsElapsed()) / 1e6;
        first = first > 0 ? first : open;
        clock.restart();
        constexpr int kShown = 50;
        for (int i = 0; i < kShown; ++i) {
            window.showCycle({0, (i * 7919) % cycles});
        }
        const double show = double(clock.nsecsElapsed()) / 1e6 / kShown;
        std::printf("%-10d %12.1f %16.1f %14.2f\n", cycles, open, open / first, show);
    }
    return 0;
}

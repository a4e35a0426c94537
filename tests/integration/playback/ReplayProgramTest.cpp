// Recordings made by autoscene-run --record on a private Xvfb, replayed by autoscene-replay
// as a user would: unchanged, with a task edited, cut short and damaged.

#include <gtest/gtest.h>
#include <signal.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>
#include <algorithm>
#include <set>
#include <thread>

#include "DemoTargetProcess.h"
#include "ProgramRun.h"
#include "TestFiles.h"
#include "XvfbServer.h"

using namespace autoscene::test;
using namespace autoscene::testing;
using namespace std::chrono_literals;

namespace {

using Result = ProgramResult;

Result replay(const QStringList& arguments) {
    return runProgram(AUTOSCENE_REPLAY_PATH, arguments, QProcessEnvironment::systemEnvironment(),
                      120000);
}

std::vector<QJsonObject> recordedCycles(const QString& recording) {
    std::vector<QJsonObject> cycles =
        Result{0, QString::fromUtf8(readFile(recording + "/cycles.jsonl")), {}}.lines();
    cycles.erase(cycles.begin());
    return cycles;
}

class Recordings : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.display().empty()); }

    void startRun(QProcess& process, const QStringList& arguments) {
        process.setProcessEnvironment(onDisplay(server.display()));
        process.start(AUTOSCENE_RUN_PATH, arguments);
        ASSERT_TRUE(process.waitForStarted());
    }

    QString record(const QString& task, const QStringList& options = {}) {
        QString recording = folder.filePath(QString::number(++count));
        QProcess process;
        startRun(process, QStringList{task, "--record", recording, "--time-limit", "60"} + options);
        const Result result = finishProgram(process, 120000);
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        return recording;
    }

    XvfbServer server{1024, 768};
    QTemporaryDir folder;
    int count = 0;
};

TEST_F(Recordings, DemoReplaysAsRecordedAndAnEditShowsExactlyTheCyclesItChanges) {
    DemoTargetProcess target(server.display(), {});
    ASSERT_TRUE(target.started());
    const QString recording = record(AUTOSCENE_DEMO_TASK);
    const std::vector<QJsonObject> cycles = recordedCycles(recording);
    ASSERT_GT(cycles.size(), 3u);

    Result same = replay({recording, "--json"});
    EXPECT_EQ(same.exitCode, 0) << same.out.toStdString() << same.err.toStdString();
    EXPECT_EQ(same.summary()["cycles"].toInt(), int(cycles.size()));
    EXPECT_EQ(same.summary()["differing_cycles"].toInt(), 0);

    // "next" needs one more pixel of its colour than it ever saw: exactly the cycles where
    // it fired decide differently.
    int highest = 0;
    std::set<int> expected;
    for (const QJsonObject& cycle : cycles) {
        for (const QJsonValue check : cycle["checks"].toArray()) {
            if (check["event"] == "next" && check["holds"].toBool()) {
                highest = std::max(highest, check["conditions"]["item_state"][0]["count"].toInt());
                expected.insert(cycle["cycle"].toInt());
            }
        }
    }
    ASSERT_FALSE(expected.empty());
    const QString edited = folder.filePath("edited");
    ASSERT_EQ(QProcess::execute("cp", {"-r", recording + "/task", edited}), 0);
    QByteArray json = readFile(edited + "/script.json");
    const QByteArray next = R"("color_id": 3, "search_id": 7, "count": 1000)";
    ASSERT_TRUE(json.contains(next));
    json.replace(next, R"("color_id": 3, "search_id": 7, "count": )" + QByteArray::number(highest));
    writeFile(edited + "/script.json", json);
    const Result changed = replay({recording, "--task", edited, "--json"});
    EXPECT_EQ(changed.exitCode, 1) << changed.err.toStdString();
    std::set<int> reported;
    for (const QJsonObject& line : changed.lines()) {
        if (line["type"] == "difference") {
            reported.insert(line["cycle"].toInt());
        }
        // Each colour count's evidence says what it was held against.
        for (const QJsonValue difference : line["differences"].toArray()) {
            const QJsonValue colour = difference["new"]["conditions"]["item_state"][0];
            if (colour["type"] == "color" &&
                colour["name"] == difference["old"]["conditions"]["item_state"][0]["name"]) {
                EXPECT_EQ(difference["old"]["conditions"]["item_state"][0]["more_than"], 1000);
                EXPECT_EQ(colour["more_than"], highest);
            }
        }
    }
    EXPECT_EQ(reported, expected) << changed.out.toStdString();

    // Cut in the middle of its last line: read up to the cut, with a message naming it.
    QFile lines(recording + "/cycles.jsonl");
    ASSERT_TRUE(lines.resize(lines.size() - 20));
    const Result cut = replay({recording, "--json"});
    EXPECT_EQ(cut.exitCode, 0) << cut.err.toStdString();
    EXPECT_TRUE(cut.err.contains(
        QString("cycles.jsonl:%1: the line is cut short").arg(int(cycles.size()) + 1)))
        << cut.err.toStdString();
    EXPECT_EQ(cut.summary()["cycles"].toInt(), int(cycles.size()) - 1);

    // A damaged line in the middle is bad input, named by file and line.
    QByteArray text = readFile(lines.fileName());
    text[text.indexOf('\n', text.indexOf('\n') + 1) + 1] = '#';
    writeFile(lines.fileName(), text);
    const Result corrupt = replay({recording});
    EXPECT_EQ(corrupt.exitCode, 2);
    EXPECT_TRUE(corrupt.err.contains("cycles.jsonl:3: not JSON")) << corrupt.err.toStdString();
}

TEST_F(Recordings, KilledRunLeavesAReadableRecording) {
    DemoTargetProcess target(server.display(), {});
    ASSERT_TRUE(target.started());
    const QString recording = folder.filePath("killed");
    QProcess process;
    startRun(process, {AUTOSCENE_DEMO_TASK, "--record", recording, "--loop-interval", "0"});
    // Killed once it has written some cycles, in the middle of the run.
    const auto written = [&] {
        QFile lines(recording + "/cycles.jsonl");
        return lines.open(QIODevice::ReadOnly) ? lines.readAll().count('\n') : 0;
    };
    for (int wait = 0; wait < 200 && written() < 3; ++wait) {
        std::this_thread::sleep_for(100ms);
    }
    ASSERT_GE(written(), 3);
    ::kill(pid_t(process.processId()), SIGKILL);
    finishProgram(process);
    const Result replayed = replay({recording, "--json"});
    EXPECT_EQ(replayed.exitCode, 0) << replayed.out.toStdString() << replayed.err.toStdString();
    EXPECT_GT(replayed.summary()["cycles"].toInt(), 0);
}

TEST_F(Recordings, TimersAndVariablesReplayAsRecorded) {
    // Every second "tick" counts; at 2 "arm" restarts a switched-off timer every cycle, which
    // fires a second after the count moves on, adds 10, and the count above 12 stops the run.
    const QString recording = record(AUTOSCENE_FIXTURES "/tasks/timers", {"--full-screen"});
    const std::vector<QJsonObject> cycles = recordedCycles(recording);
    // The screen never changes: its frame is stored once.
    EXPECT_EQ(QDir(recording + "/frames").entryList(QDir::Files).size(), 1);
    QStringList fired;
    for (const QJsonObject& cycle : cycles) {
        for (const QJsonValue event : cycle["fired"].toArray()) {
            fired << event["event"].toString();
        }
    }
    ASSERT_EQ(fired.count("late"), 1) << fired.join(' ').toStdString();
    const Result replayed = replay({recording, "--json"});
    EXPECT_EQ(replayed.exitCode, 0) << replayed.out.toStdString();

    // The run judged "late" a little after its cycle's capture; with that capture a
    // millisecond before "late" was due, the replay still judges the cycle when it fired.
    QList<QByteArray> lines = readFile(recording + "/cycles.jsonl").split('\n');
    const auto late = std::find_if(cycles.begin(), cycles.end(), [](const QJsonObject& c) {
        return QJsonDocument(c["fired"].toArray()).toJson().contains("\"late\"");
    });
    ASSERT_TRUE(late != cycles.begin() && late != cycles.end());
    const double restarted = (late - 1)->value("state")["variables"]["3"]["mark_ms"].toDouble();
    QJsonObject moved = *late;
    moved["time_ms"] = restarted + 999;
    lines[int(late - cycles.begin()) + 1] = QJsonDocument(moved).toJson(QJsonDocument::Compact);
    writeFile(recording + "/cycles.jsonl", lines.join('\n'));
    const Result early = replay({recording, "--json"});
    EXPECT_EQ(early.exitCode, 0) << early.out.toStdString();
}

}  // namespace

// Scripts in whole runs: the exclusive queue across two targets, and a stop that reaches a
// script waiting for a server. A stop or time limit reaching a script stuck in a loop is
// autoscene-run's test (tests/integration/runner).

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <atomic>
#include <chrono>
#include <set>

#include "LoopbackPort.h"
#include "ProbedRun.h"
#include "TestFiles.h"
#include "script/ScriptItems.h"

using namespace autoscene::engine;
using namespace std::chrono_literals;

namespace {

class ScriptRun : public ::testing::Test, protected autoscene::test::ProbedRun {
protected:
    ScriptRun() { autoscene::script::registerScriptItems(factory); }

    // One scene whose only event runs `code`, then the probe; one variable "done" = "no".
    void open(const QString& code) {
        // `code` as a JSON string: a one-element array without its brackets.
        const QByteArray quoted = QJsonDocument(QJsonArray{code}).toJson(QJsonDocument::Compact);
        ProbedRun::open(QString::fromUtf8(autoscene::test::readFile(AUTOSCENE_FIXTURES
                                                                    "/script/two-targets.json"))
                            .arg(QString::fromUtf8(quoted.mid(1).chopped(1))));
    }
};

TEST_F(ScriptRun, LockHoldsTheOtherTargetBackUntilUnlocked) {
    open(
        "if (auto.getCurrentWindow() == '1') {"
        "  auto.lock(); auto.lock();"  // queued once
        "  if (done == 'yes') auto.unlock();"
        "} ''");
    std::atomic<int> firstRuns{0};
    std::atomic<int> secondRunsWhileLocked{0};
    std::atomic<int> secondRunsAfter{0};
    std::atomic<bool> released{false};
    const auto giveUp = std::chrono::steady_clock::now() + 20s;
    onProbe = [&](int, TaskInfo& info) {
        if (info.window == 1) {
            if (++firstRuns == 30) {
                runner->definitions().find(1)->setValue("yes");  // this worker's value
                released = true;
            }
        } else if (firstRuns > 0 && !released) {
            ++secondRunsWhileLocked;
        } else if (released && ++secondRunsAfter == 5) {
            runner->stop();
        }
        if (std::chrono::steady_clock::now() > giveUp) {
            runner->stop();
        }
    };
    ASSERT_TRUE(runner->start({{TargetKind::Desktop, 1}, {TargetKind::Desktop, 2}}));
    ASSERT_TRUE(runner->waitUntilIdle(30s));
    EXPECT_LE(secondRunsWhileLocked, 1);  // at most the cycle already under way
    EXPECT_EQ(secondRunsAfter, 5);
}

TEST_F(ScriptRun, ALockNeverUnlockedEndsWithItsRun) {
    open("if (done == 'lock') auto.lock(); ''");
    std::set<autoscene::platform::WindowHandle> probed;
    onProbe = [&](int, TaskInfo& info) {
        probed.insert(info.window);
        if (info.window == 3 || probed.size() == 2) {
            runner->stop();
        }
    };
    ASSERT_TRUE(runner->start(
        {{.kind = TargetKind::Desktop, .window = 3, .variableOverrides = {{1, "lock"}}}}));
    ASSERT_TRUE(runner->waitUntilIdle(30s));
    probed.clear();

    // Nobody locks in the next run: both targets have their turns.
    ASSERT_TRUE(runner->start({{TargetKind::Desktop, 1}, {TargetKind::Desktop, 2}}));
    const bool ended = runner->waitUntilIdle(10s);
    runner->stop();
    EXPECT_TRUE(ended) << "the second run was held by the first run's lock";
    std::lock_guard lock(probeMutex);
    EXPECT_EQ(probed.size(), 2u);
}

TEST_F(ScriptRun, AStopEndsARequestToAServerThatNeverAnswers) {
    const autoscene::test::SilentListener hung;
    open(QStringLiteral("http.get('http://127.0.0.1:%1/')").arg(hung.port()));
    ASSERT_TRUE(runner->start({{TargetKind::Desktop, 1}}));
    std::this_thread::sleep_for(300ms);
    runner->stop();
    // Well before the request's own 30 s time-out.
    EXPECT_TRUE(runner->waitUntilIdle(5s));
}

}  // namespace

// Whole runs on the in-process target: loop modes, multi-target modes, scenes,
// common events, stop, time limit and suspension. The exclusive queue is ScriptRun's
// (auto.lock and auto.unlock in tests/unit/script).

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>
#include <opencv2/core.hpp>
#include <set>
#include <thread>

#include "ManualClock.h"
#include "ProbedRun.h"
#include "ScriptedScreenItem.h"
#include "TestFiles.h"

using namespace autoscene::engine;
using namespace autoscene::model;
using autoscene::test::ManualClock;
using autoscene::test::ScriptedScreenItem;

namespace {

using namespace std::chrono_literals;

class Runner : public ::testing::Test, protected autoscene::test::ProbedRun {
protected:
    void SetUp() override {
        onProbe = [this](int probe, TaskInfo&) { runs.push_back(probe); };
        target.setFrames({cv::Mat(4, 6, CV_8UC3, cv::Scalar(1, 2, 3))});
    }

    static QString fixture(const QString& name) {
        return QString::fromUtf8(autoscene::test::readFile(AUTOSCENE_FIXTURES "/runner/" + name));
    }

    // Stops the run once `done` says so on a probe run (under the probe lock), or after 5 s:
    // a busy machine may hold one thread back for thousands of the others' cycles.
    void stopWhen(const std::function<bool(TaskInfo&)>& done) {
        const auto giveUp = std::chrono::steady_clock::now() + 5s;
        onProbe = [this, done, giveUp](int probe, TaskInfo& info) {
            runs.push_back(probe);
            if (done(info) || std::chrono::steady_clock::now() > giveUp) {
                runner->stop();
            }
        };
    }
    void stopAfter(size_t count) {
        stopWhen([this, count](TaskInfo&) { return runs.size() >= count; });
    }

    void runToEnd(std::vector<RunTarget> targets = {{TargetKind::Desktop}}) {
        ASSERT_TRUE(runner->start(std::move(targets)));
        ASSERT_TRUE(runner->waitUntilIdle(10s));
    }

    // The variable_id of every probe run, in order; read once the run is idle.
    std::vector<int> runs;
};

// Sequential mode resuming after the fired event is CommonEventsGoAroundIdentifiedScenesOnly's.
TEST_F(Runner, SingleEventModeStartsEachCycleOverAtTheFirstEvent) {
    open(fixture("three-events.json").replace(R"("loop_mode": 1)", R"("loop_mode": 2)"));
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(runs, (std::vector<int>{1, 1, 1}));
}

TEST_F(Runner, TraversalActionsDoNotEndTheTraversal) {
    // e1 only sets a variable, so e2 runs in the same cycle; e2 fires only then.
    open(fixture("traversal.json"));
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(runs, (std::vector<int>{2, 2, 2}));
    EXPECT_EQ(runner->cyclesCompleted(), 3);  // the third cycle was cut short by the stop
}

TEST_F(Runner, CommonEventsGoAroundIdentifiedScenesOnly) {
    open(fixture("common-events.json"));
    stopAfter(6);
    runToEnd();
    // The unidentified scene runs its event while the scene list is searched; once the
    // identified scene is current, only it runs, common events first and low ones last.
    EXPECT_EQ(runs, (std::vector<int>{9, 1, 2, 3, 1, 2}));
}

TEST_F(Runner, ScenesChangeAndTheirEntryActionsRunOnce) {
    struct Entered : IMVSceneEvent {
        std::mutex mutex;
        QStringList names;
        void sceneEntered(const Scene& scene, const ItemGroup*) override {
            std::lock_guard lock(mutex);
            names << scene.name;
        }
    } observer;
    open(fixture("scene-change.json"));
    runner->setSceneObserver(&observer);
    stopAfter(8);
    runToEnd();
    EXPECT_EQ(runs, (std::vector<int>{10, 1, 20, 2, 10, 1, 20, 2}));
    EXPECT_EQ(observer.names, (QStringList{"a", "b", "a", "b"}));
}

TEST_F(Runner, StopActionEndsTheRunAndAStartWhileRunningIsRefused) {
    // Its first event waits a real second, so the run is surely still going at the second start.
    open(fixture("stop-action.json"));
    ASSERT_TRUE(runner->start({{TargetKind::Desktop}}));
    EXPECT_FALSE(runner->start({{TargetKind::Desktop}, {TargetKind::Desktop}}));
    ASSERT_TRUE(runner->waitUntilIdle(10s));
    EXPECT_EQ(runner->runEnd(), RunEnd::StopAction);
    EXPECT_EQ(runner->cyclesCompleted(), 1);
}

TEST_F(Runner, TimeLimitEndsTheRunWithCodeOne) {
    struct Listener : ITaskFinishListener {
        std::atomic<int> code{-1}, calls{0};
        void finished(int c) override { code = c, ++calls; }
    } listener;
    auto clock = std::make_shared<ManualClock>();
    open(fixture("three-events.json"), clock);
    runner->setLoopIntervalMs(250);
    runner->setRunTimeLimitSeconds(1);
    runner->setFinishListener(&listener);
    runToEnd();
    EXPECT_EQ(runner->runEnd(), RunEnd::TimeLimit);
    EXPECT_EQ(std::pair(listener.code.load(), listener.calls.load()), std::pair(1, 1));
    // At 250 ms a cycle, the one due at 1000 ms finds the time up.
    EXPECT_EQ(runner->cyclesCompleted(), 3);
}

TEST_F(Runner, TheTimeLimitAndAStopEndARunInTheMiddleOfALongPause) {
    // {what pauses, loop interval ms, the event's action}
    const std::tuple<const char*, int, const char*> pauses[] = {
        {"loop interval", 60000, R"({"type": 1, "variable_id": 1})"},
        {"delay action", 0, R"({"type": 14, "min": 60, "max": 60})"},
        {"action wait", 0, R"({"type": 1, "variable_id": 1, "postpone": 60})"},
    };
    for (const auto& [name, loopIntervalMs, action] : pauses) {
        for (const bool byStop : {false, true}) {
            SCOPED_TRACE(std::string(name) + (byStop ? ", stopped" : ", time limit"));
            open(QStringLiteral(R"({"var_list": [{"type": 1, "id": 1, "value": "0"}], "scene_list":
                [{"name": "s", "event_list": [{"name": "e", "action_list": [%1]}]}]})")
                     .arg(action));
            runner->setLoopIntervalMs(loopIntervalMs);
            runner->setRunTimeLimitSeconds(byStop ? -1 : 1);
            ASSERT_TRUE(runner->start({{TargetKind::Desktop}}));
            if (byStop) {
                std::this_thread::sleep_for(300ms);
                runner->stop();
            }
            EXPECT_TRUE(runner->waitUntilIdle(5s));
            EXPECT_EQ(runner->runEnd(), byStop ? RunEnd::Stopped : RunEnd::TimeLimit);
        }
    }
}

TEST_F(Runner, AStopSkipsTheDetectionsNotYetBegun) {
    // Each image detects once per cycle, and the first to detect stops the run.
    std::atomic<int> detections{0};
    factory.addCondition(1, [&](const IEditorCondition&, RunContext& context) {
        return std::make_unique<ScriptedScreenItem>(ScreenItem::Settings{}, context.clock, [&] {
            ++detections;
            runner->stop();
            return kFound;
        });
    });
    const QStringList images(200, QStringLiteral(R"({"type": 1, "relation": 1})"));
    open(QStringLiteral(R"({"scene_list": [{"name": "s", "event_list": [{"name": "e", "item_group":
        {"type": 5, "item_list": [%1]}, "action_list": [{"type": 1, "variable_id": 1}]}]}]})")
             .arg(images.join(',')));
    runToEnd();
    EXPECT_EQ(detections, 1);
    EXPECT_TRUE(runs.empty());
}

TEST_F(Runner, EveryTargetRunsInBothMultiTargetModesWithItsOwnStartValues) {
    using autoscene::platform::WindowHandle;
    for (bool concurrency : {true, false}) {
        SCOPED_TRACE(concurrency ? "concurrent" : "in turn");
        open(fixture("one-probe.json")
                 .replace(R"("concurrency": false)",
                          concurrency ? R"("concurrency": true)" : R"("concurrency": false)"));
        std::map<WindowHandle, QString> values;
        stopWhen([&](TaskInfo& info) {
            values[info.window] = runner->definitions().find(1)->value();
            return values.size() == 3;
        });
        runToEnd({{.kind = TargetKind::Desktop, .window = 1, .variableOverrides = {{1, "alpha"}}},
                  {.kind = TargetKind::Desktop, .window = 2, .variableOverrides = {{1, "beta"}}},
                  {TargetKind::Desktop, 3}});
        EXPECT_EQ(values, (std::map<WindowHandle, QString>{{1, "alpha"}, {2, "beta"}, {3, "0"}}));
    }
}

TEST_F(Runner, SuspendedThreadsWaitUntilResumed) {
    for (bool concurrency : {true, false}) {
        open(fixture("three-events.json"));
        runner->setConcurrency(concurrency);
        runner->setLoopIntervalMs(1);
        ASSERT_TRUE(runner->start({{TargetKind::Desktop}, {TargetKind::Desktop}}));
        runner->suspend();
        std::this_thread::sleep_for(100ms);
        const auto held = runner->cyclesCompleted();
        std::this_thread::sleep_for(200ms);
        EXPECT_LE(runner->cyclesCompleted(), held + 2) << "concurrency " << concurrency;
        runner->resume();
        const auto giveUp = std::chrono::steady_clock::now() + 5s;
        while (runner->cyclesCompleted() <= held + 2 && std::chrono::steady_clock::now() < giveUp) {
            std::this_thread::sleep_for(10ms);
        }
        EXPECT_GT(runner->cyclesCompleted(), held + 2);
        runner->stop();
        ASSERT_TRUE(runner->waitUntilIdle(10s));
    }
}

TEST_F(Runner, WindowTargetsClaimDifferentWindows) {
    struct AcceptAll : IWindowMatcher {
        bool accepts(autoscene::platform::WindowHandle) override { return true; }
    } matcher;
    open(fixture("one-probe.json"));
    target.setWindows({11, 22});
    runner->setWindowMatcher(&matcher);
    std::set<autoscene::platform::WindowHandle> windows;
    stopWhen([&](TaskInfo& info) {
        windows.insert(info.window);
        return windows.size() == 2;
    });
    runToEnd({{TargetKind::Window}, {TargetKind::Window}});
    EXPECT_EQ(windows, (std::set<autoscene::platform::WindowHandle>{11, 22}));
}

// A lost display ending the run is autoscene-run's test (tests/integration/runner).
TEST_F(Runner, FailedCapturesAreReportedAndTheRunGoesOn) {
    struct Failures : IRunObserver {
        std::atomic<int> failed{0}, started{0};
        void runStarted(int targets) override { started = targets; }
        void captureFailed() override { ++failed; }
    } observer;
    open(fixture("three-events.json"));
    target.setFrames({});
    runner->setRunObserver(&observer);
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(observer.started, 1);
    EXPECT_GE(observer.failed, 3);
    EXPECT_EQ(runs.size(), 3u);  // conditions on run state still work
}

}  // namespace

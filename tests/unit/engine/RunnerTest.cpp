// Whole runs on the in-process target: loop modes, multi-target modes, scenes,
// common events, stop, time limit and suspension. The exclusive queue is ScriptRun's
// (auto.lock and auto.unlock in tests/unit/script).

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>
#include <functional>
#include <opencv2/core.hpp>
#include <set>
#include <thread>

#include "InProcessTarget.h"
#include "ManualClock.h"
#include "engine/RuntimeFactory.h"
#include "engine/ScreenItem.h"
#include "engine/TaskRunner.h"
#include "model/EditorActions.h"
#include "model/TaskDocument.h"

using namespace autoscene::engine;
using namespace autoscene::model;
using autoscene::test::InProcessTarget;
using autoscene::test::ManualClock;

namespace {

using namespace std::chrono_literals;

// Every run of a probe: which probe (the tap's variable_id) on which thread's target.
struct ProbeLog {
    std::mutex mutex;
    std::vector<std::pair<int, autoscene::platform::WindowHandle>> runs;
    std::function<void(int probe, TaskInfo&)> onRun;

    std::vector<int> probes() {
        std::lock_guard lock(mutex);
        std::vector<int> ids;
        std::ranges::transform(runs, std::back_inserter(ids), &decltype(runs)::value_type::first);
        return ids;
    }
};

// Stands in for a tap: records itself and acts on the target, so it ends a traversal.
class Probe : public IAction {
public:
    Probe(int id, ProbeLog& log, float waitSeconds = 0.0f)
        : IAction(1, waitSeconds), id_(id), log_(log) {}
    float run(TaskInfo& task) override {
        std::lock_guard lock(log_.mutex);
        log_.runs.emplace_back(id_, task.window.load());
        if (log_.onRun) {
            log_.onRun(id_, task);
        }
        return waitSeconds();
    }

private:
    const int id_;
    ProbeLog& log_;
};

QString probe(int id) {
    return QStringLiteral(R"({"type": 1, "variable_id": %1})").arg(id);
}

QString event(const QString& name, const QString& conditions, const QStringList& actions,
              bool disabled = false) {
    return QStringLiteral(R"({"name": "%1", "disabled": %2, "item_group": {"type": 5,
        "item_list": [%3]}, "action_list": [%4]})")
        .arg(name, disabled ? "true" : "false", conditions, actions.join(','));
}

QString varEquals(int id, const QString& value) {
    return QStringLiteral(R"({"type": 2, "relation": 1, "variable_id": %1, "compare_value": "%2",
        "state": 0})")
        .arg(id)
        .arg(value);
}

QString setVar(int id, const QString& value) {
    return QStringLiteral(R"({"type": 3, "variable_id": %1, "change_value": "%2"})")
        .arg(id)
        .arg(value);
}

QString scene(const QString& name, const QString& identification, const QStringList& events,
              const QStringList& entryActions = {}) {
    return QStringLiteral(R"({"name": "%1", "scene_event": %2, "event_list": [%3]})")
        .arg(name, event("id", identification, entryActions), events.join(','));
}

class Runner : public ::testing::Test {
protected:
    void SetUp() override {
        factory.addAction(EditorTapAction::kType, [this](const IEditorAction& record, RunContext&) {
            const auto& tap = static_cast<const EditorTapAction&>(record);
            return std::make_unique<Probe>(tap.variableId, log, tap.postpone);
        });
        target.setFrames({cv::Mat(4, 6, CV_8UC3, cv::Scalar(1, 2, 3))});
    }

    TaskRunner& open(const QString& json, std::shared_ptr<RunClock> clock = nullptr) {
        const OpenResult result = task.openText(json.toUtf8());
        EXPECT_TRUE(result.ok) << result.error.toStdString();
        runner = std::make_unique<TaskRunner>(task, factory, target, std::move(clock));
        runner->setLoopIntervalMs(0);
        return *runner;
    }

    // Stops the run after `count` probe runs.
    void stopAfter(size_t count) {
        log.onRun = [this, count](int, TaskInfo&) {
            if (log.runs.size() >= count) {
                runner->stop();
            }
        };
    }

    // When a run waiting for every thread gives up: a busy machine may hold one thread back
    // for thousands of the others' cycles, so no cycle count will do.
    static std::chrono::steady_clock::time_point giveUpTime() {
        return std::chrono::steady_clock::now() + 5s;
    }

    void runToEnd(std::vector<RunTarget> targets = {{TargetKind::Desktop}}) {
        ASSERT_TRUE(runner->start(std::move(targets)));
        ASSERT_TRUE(runner->waitUntilIdle(10s));
    }

    RuntimeFactory factory;
    InProcessTarget target;
    TaskDocument task;
    ProbeLog log;
    std::unique_ptr<TaskRunner> runner;
};

QString threeEventTask(int loopMode) {
    return QStringLiteral(R"({"loop_mode": %1, "var_list": [{"type": 1, "id": 1, "value": "on"}],
        "scene_list": [%2]})")
        .arg(loopMode)
        .arg(scene("s", varEquals(1, "on"),
                   {event("e1", "", {probe(1)}), event("e2", "", {probe(2)}),
                    event("e3", "", {probe(3)})}));
}

TEST_F(Runner, SequentialModeResumesAfterTheFiredEventAndSingleEventModeStartsOver) {
    open(threeEventTask(1));
    stopAfter(7);
    runToEnd();
    EXPECT_EQ(log.probes(), (std::vector<int>{1, 2, 3, 1, 2, 3, 1}));
    EXPECT_EQ(runner->runEnd(), RunEnd::Stopped);

    log.runs.clear();
    open(threeEventTask(2));
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(log.probes(), (std::vector<int>{1, 1, 1}));
}

TEST_F(Runner, TraversalActionsDoNotEndTheTraversal) {
    // e1 only sets a variable, so e2 runs in the same cycle; e2 fires only then.
    open(QStringLiteral(R"({"loop_mode": 2, "var_list": [{"type": 1, "id": 1, "value": "on"},
        {"type": 1, "id": 2, "value": "no"}], "scene_list": [%1]})")
             .arg(scene("s", varEquals(1, "on"),
                        {event("e1", "", {setVar(2, "yes")}),
                         event("e2", varEquals(2, "yes"), {probe(2), setVar(2, "no")})})));
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(log.probes(), (std::vector<int>{2, 2, 2}));
    EXPECT_EQ(runner->cyclesCompleted(), 3);  // the third cycle was cut short by the stop
}

TEST_F(Runner, CommonEventsGoAroundIdentifiedScenesOnly) {
    open(QStringLiteral(R"({"loop_mode": 1, "var_list": [{"type": 1, "id": 1, "value": "on"}],
        "scene_list": [%1, %2],
        "common_event": {"event_list": [%3, %4]},
        "common_event_low": {"event_list": [%5]}})")
             .arg(scene("plain", "", {event("p", "", {probe(9)})}),
                  scene("s", varEquals(1, "on"), {event("own", "", {probe(2)})}),
                  event("c", "", {probe(1)}), event("off", "", {probe(7)}, true),
                  event("low", "", {probe(3)})));
    stopAfter(6);
    runToEnd();
    // The unidentified scene runs its event while the scene list is searched; once the
    // identified scene is current, only it runs, common events first and low ones last.
    EXPECT_EQ(log.probes(), (std::vector<int>{9, 1, 2, 3, 1, 2}));
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
    open(QStringLiteral(R"({"var_list": [{"type": 1, "id": 1, "value": "a"}],
        "scene_list": [%1, %2]})")
             .arg(scene("a", varEquals(1, "a"), {event("go", "", {probe(1), setVar(1, "b")})},
                        {probe(10)}),
                  scene("b", varEquals(1, "b"), {event("back", "", {probe(2), setVar(1, "a")})},
                        {probe(20)})));
    runner->setSceneObserver(&observer);
    stopAfter(8);
    runToEnd();
    EXPECT_EQ(log.probes(), (std::vector<int>{10, 1, 20, 2, 10, 1, 20, 2}));
    EXPECT_EQ(observer.names, (QStringList{"a", "b", "a", "b"}));
}

TEST_F(Runner, StopActionEndsTheRunAndAStartWhileRunningIsRefused) {
    open(QStringLiteral(R"({"scene_list": [%1]})")
             .arg(scene("s", "",
                        // A real second, so the run is surely still going at the second start.
                        {event("wait", "", {R"({"type": 14, "min": 1, "max": 1})"}),
                         event("gate", varEquals(5, "x"), {probe(1)}),
                         event("stop", "", {R"({"type": 10})"})})));
    log.onRun = [](int, TaskInfo&) {};
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
    open(threeEventTask(1), clock);
    runner->setLoopIntervalMs(250);
    runner->setRunTimeLimitSeconds(1);
    runner->setFinishListener(&listener);
    runToEnd();
    EXPECT_EQ(runner->runEnd(), RunEnd::TimeLimit);
    EXPECT_EQ(listener.code, 1);
    EXPECT_EQ(listener.calls, 1);
    // At 250 ms a cycle, the one due at 1000 ms finds the time up.
    EXPECT_EQ(runner->cyclesCompleted(), 3);
}

TEST_F(Runner, TheTimeLimitAndAStopEndARunInTheMiddleOfALongPause) {
    const struct {
        const char* name;
        int loopIntervalMs;
        QString actions;
    } pauses[] = {
        {"loop interval", 60000, probe(1)},
        {"delay action", 0, R"({"type": 14, "min": 60, "max": 60})"},
        {"action wait", 0, R"({"type": 1, "variable_id": 1, "postpone": 60})"},
    };
    for (const auto& pause : pauses) {
        for (const bool byStop : {false, true}) {
            SCOPED_TRACE(std::string(pause.name) + (byStop ? ", stopped" : ", time limit"));
            open(QStringLiteral(R"({"var_list": [{"type": 1, "id": 1, "value": "0"}],
                "scene_list": [%1]})")
                     .arg(scene("s", "", {event("e", "", {pause.actions})})));
            runner->setLoopIntervalMs(pause.loopIntervalMs);
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

// Detects once per cycle and stops the run on its first detection.
class StoppingDetection : public ScreenItem {
public:
    StoppingDetection(const RunClock& clock, TaskRunner*& runner, std::atomic<int>& detections)
        : ScreenItem(1, 1, {}, clock), runner_(runner), detections_(detections) {}
    QString typeWord() const override { return QStringLiteral("image"); }

protected:
    int detect(TaskInfo&) override {
        ++detections_;
        runner_->stop();
        return kFound;
    }

private:
    TaskRunner*& runner_;
    std::atomic<int>& detections_;
};

TEST_F(Runner, AStopSkipsTheDetectionsNotYetBegun) {
    std::atomic<int> detections{0};
    TaskRunner* current = nullptr;
    factory.addCondition(1, [&](const IEditorCondition&, RunContext& context) {
        return std::make_unique<StoppingDetection>(context.clock, current, detections);
    });
    QStringList images;
    for (int i = 0; i < 200; ++i) {
        images << QStringLiteral(R"({"type": 1, "relation": 1})");
    }
    open(QStringLiteral(R"({"scene_list": [%1]})")
             .arg(scene("s", "", {event("e", images.join(','), {probe(1)})})));
    current = runner.get();
    runToEnd();
    EXPECT_EQ(detections, 1);
    EXPECT_TRUE(log.probes().empty());
}

TEST_F(Runner, EveryTargetRunsInBothMultiTargetModesWithItsOwnStartValues) {
    using autoscene::platform::WindowHandle;
    for (bool concurrency : {true, false}) {
        SCOPED_TRACE(concurrency ? "concurrent" : "in turn");
        open(QStringLiteral(R"({"loop_mode": 2, "concurrency": %1,
            "var_list": [{"type": 1, "id": 1, "value": "0"}], "scene_list": [%2]})")
                 .arg(concurrency ? "true" : "false")
                 .arg(scene("s", "", {event("p", "", {probe(1)})})));
        // Probes run under the log's lock.
        std::map<WindowHandle, QString> values;
        const auto giveUp = giveUpTime();
        log.onRun = [&](int, TaskInfo& info) {
            values[info.window] = runner->definitions().find(1)->value();
            if (values.size() == 3 || std::chrono::steady_clock::now() > giveUp) {
                runner->stop();
            }
        };
        std::vector<RunTarget> targets{
            {TargetKind::Desktop, 1}, {TargetKind::Desktop, 2}, {TargetKind::Desktop, 3}};
        targets[0].variableOverrides[1] = "alpha";
        targets[1].variableOverrides[1] = "beta";
        runToEnd(targets);
        EXPECT_EQ(values, (std::map<WindowHandle, QString>{{1, "alpha"}, {2, "beta"}, {3, "0"}}));
    }
}

TEST_F(Runner, SuspendedThreadsWaitUntilResumed) {
    for (bool concurrency : {true, false}) {
        open(threeEventTask(1));
        runner->setConcurrency(concurrency);
        runner->setLoopIntervalMs(1);
        ASSERT_TRUE(runner->start({{TargetKind::Desktop}, {TargetKind::Desktop}}));
        runner->suspend();
        std::this_thread::sleep_for(100ms);
        const auto held = runner->cyclesCompleted();
        std::this_thread::sleep_for(200ms);
        EXPECT_LE(runner->cyclesCompleted(), held + 2) << "concurrency " << concurrency;
        runner->resume();
        const auto giveUp = giveUpTime();
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
    open(QStringLiteral(R"({"loop_mode": 2, "scene_list": [%1]})")
             .arg(scene("s", "", {event("p", "", {probe(1)})})));
    target.setWindows({11, 22});
    runner->setWindowMatcher(&matcher);
    std::set<autoscene::platform::WindowHandle> windows;  // filled under the log's lock
    const auto giveUp = giveUpTime();
    log.onRun = [&](int, TaskInfo& info) {
        windows.insert(info.window);
        if (windows.size() == 2 || std::chrono::steady_clock::now() > giveUp) {
            runner->stop();
        }
    };
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
    open(threeEventTask(1));
    target.setFrames({});
    runner->setRunObserver(&observer);
    stopAfter(3);
    runToEnd();
    EXPECT_EQ(observer.started, 1);
    EXPECT_GE(observer.failed, 3);
    EXPECT_EQ(log.probes().size(), 3u);  // conditions on run state still work
}

}  // namespace

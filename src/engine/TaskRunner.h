#pragma once
// Runs a task: one worker thread per target, each repeating a cycle of capture,
// scene choice and event traversal until the run is stopped, its time is up or a
// stop action fires.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <unordered_map>
#include <vector>

#include "engine/RunClock.h"
#include "engine/RunContext.h"
#include "engine/RunObservers.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "engine/Scene.h"
#include "engine/ScreenDetection.h"
#include "engine/TargetService.h"

namespace autoscene::model {
class TaskDocument;
class EditorEvent;
}  // namespace autoscene::model

namespace autoscene::engine {

// Why the last run ended.
enum class RunEnd : int {
    Running = 0,
    Stopped,
    StopAction,
    TimeLimit,
    TargetsFinished,
    DisplayLost,  // the display or device connection is gone for good
};

class TaskRunner : public IRunControl {
public:
    // The document must outlive the runner.
    TaskRunner(const model::TaskDocument& task, const RuntimeFactory& factory,
               ITargetService& targets, std::shared_ptr<RunClock> clock = nullptr);
    // Stops the run and waits for its threads to leave.
    ~TaskRunner() override;
    TaskRunner(const TaskRunner&) = delete;
    TaskRunner& operator=(const TaskRunner&) = delete;

    // Refused (false, nothing changed) while threads of an earlier run are alive.
    bool start(std::vector<RunTarget> targets);
    // Ends the run; `reason` says why (by default, the user asked).
    void stop(RunEnd reason = RunEnd::Stopped);
    void stopByTask() override { endRun(RunEnd::StopAction); }
    void finishCurrentTarget(int code) override;
    void suspend();
    void resume();
    // Waits until every worker has left; false on time-out.
    bool waitUntilIdle(std::chrono::milliseconds timeout);
    bool idle() const;
    RunEnd runEnd() const { return runEnd_.load(); }

    // Settings; the task's own apply until changed.
    void setLoopMode(int mode) { loopMode_ = mode; }
    void setLoopIntervalMs(int ms) { loopIntervalMs_ = ms; }
    void setRunTimeLimitSeconds(int seconds) { runTimeLimitSeconds_ = seconds; }
    void setConcurrency(bool concurrency) { concurrency_ = concurrency; }
    void setWindowMatcher(IWindowMatcher* matcher) { windowMatcher_ = matcher; }
    void setAutoPickDisabled(bool disabled) { autoPickDisabled_ = disabled; }
    void setSceneObserver(IMVSceneEvent* observer);
    void setRunObserver(IRunObserver* observer) { runObserver_ = observer; }
    void setFinishListener(ITaskFinishListener* listener) { finishListener_ = listener; }
    // Runs a cycle's independent screen detections; without one they run one by one on the
    // worker. Set before start().
    void setJobRunner(JobRunner runner) { jobRunner_ = std::move(runner); }
    // Called on the worker before each cycle's capture (a replay puts the recorded state
    // back there). Set before start().
    void setCycleStartHook(std::function<void(TaskInfo&)> hook) { cycleStart_ = std::move(hook); }

    bool stopRequested() const override;
    void enterExclusive() override;
    void leaveExclusive() override;

    const std::vector<std::unique_ptr<Scene>>& scenes() const { return scenes_; }
    RuntimeDefinitions& definitions() { return definitions_; }
    RunClock& clock() { return *clock_; }
    std::int64_t cyclesCompleted() const { return cyclesCompleted_.load(); }

private:
    void buildScenes(const RuntimeFactory& factory);
    std::unique_ptr<RuntimeEvent> buildEvent(const model::EditorEvent& record,
                                             const RuntimeFactory& factory, bool common);
    void workerBody(const std::shared_ptr<TaskInfo>& task);
    void keepWindow(TaskInfo& task);
    bool runCycle(TaskInfo& task);
    void capture(TaskInfo& task);
    bool evaluateScene(Scene& scene, TaskInfo& task);
    void runActions(const RuntimeEvent& event, TaskInfo& task);
    void resetEventGroups(Scene& scene);
    bool waitForTurn(TaskInfo& task, std::unique_lock<std::mutex>& lock);
    bool excludedByExclusiveQueue();
    bool timeLimitPassed() const;
    // Ends the run when its time is up, wherever its workers are.
    void watchTimeLimit();
    // Ends the run; true for the call that ended it.
    bool endRun(RunEnd reason);
    void joinWorkers();
    void callRunEndHooks();

    const model::TaskDocument& task_;
    ITargetService& targets_;
    std::shared_ptr<RunClock> clock_;
    RuntimeDefinitions definitions_;
    std::vector<RuntimeFactory::RunStartHook> runStartHooks_;
    std::vector<std::function<void()>> runEndHooks_;
    JobRunner jobRunner_;
    std::function<void(TaskInfo&)> cycleStart_;
    RunContext context_;
    std::vector<std::unique_ptr<Scene>> scenes_;
    std::vector<std::shared_ptr<RuntimeEvent>> commonEvents_;
    std::vector<std::shared_ptr<RuntimeEvent>> lowCommonEvents_;

    std::atomic<int> loopMode_;
    std::atomic<int> loopIntervalMs_;
    std::atomic<int> runTimeLimitSeconds_{-1};
    std::atomic<bool> concurrency_;
    IWindowMatcher* windowMatcher_ = nullptr;
    std::atomic<bool> autoPickDisabled_{false};
    IMVSceneEvent* sceneObserver_ = nullptr;
    IRunObserver* runObserver_ = nullptr;
    ITaskFinishListener* finishListener_ = nullptr;

    std::atomic<bool> running_{false};
    std::atomic<bool> suspended_{false};
    std::atomic<RunEnd> runEnd_{RunEnd::Running};
    std::atomic<std::int64_t> startMs_{0};
    std::atomic<std::int64_t> cyclesCompleted_{0};
    // Set once a scene without identification has reset its events; cleared when a scene
    // is entered. Shared by the run's workers, on purpose.
    std::atomic<bool> unidentifiedReset_{false};
    std::vector<std::thread> workers_;
    std::thread timeLimitWatch_;
    std::stop_source stopSource_;  // one per run; endRun() sets it
    std::mutex timeLimitMutex_;
    std::condition_variable timeLimitWake_;

    std::mutex mutex_;  // the queue mode's cycle lock
    std::condition_variable wake_;
    // Guards the two counters apart from the cycle lock, so that asking whether the run is
    // idle never waits for a cycle to end.
    mutable std::mutex liveMutex_;
    int liveThreads_ = 0;
    // Workers that have not yet passed the end hooks: the last one runs them before it
    // counts as gone, so a run is idle only after its end hooks.
    int threadsBeforeEndHooks_ = 0;
    int activeTargets_ = 0;
    std::condition_variable idle_;

    std::mutex claimedMutex_;
    std::vector<platform::WindowHandle> claimedWindows_;
    std::mutex exclusiveMutex_;
    std::vector<std::thread::id> exclusiveThreads_;
    std::mutex tasksMutex_;
    std::unordered_map<std::thread::id, std::shared_ptr<TaskInfo>> tasks_;
};

}  // namespace autoscene::engine

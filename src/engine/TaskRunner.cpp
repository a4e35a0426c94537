#include "engine/TaskRunner.h"

#include <QLoggingCategory>
#include <algorithm>

#include "engine/BgraConversion.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorScene.h"
#include "model/TaskDocument.h"

namespace autoscene::engine {

Q_LOGGING_CATEGORY(lcRunner, "autoscene.engine.runner")

using namespace autoscene::model;

namespace {

constexpr int kSingleEventMode = 2;

}  // namespace

TaskRunner::TaskRunner(const TaskDocument& task, const RuntimeFactory& factory,
                       ITargetService& targets, std::shared_ptr<RunClock> clock)
    : task_(task),
      targets_(targets),
      clock_(clock ? std::move(clock) : std::make_shared<RunClock>()),
      definitions_(task, *clock_),
      context_{task, definitions_, *clock_, targets, *this},
      loopMode_(task.settings.loopMode),
      loopIntervalMs_(task.settings.loopInterval),
      concurrency_(task.settings.concurrency) {
    buildScenes(factory);
    runStartHooks_ = factory.runStartHooks();
    runEndHooks_ = factory.runEndHooks();
}

TaskRunner::~TaskRunner() {
    stop();
    joinWorkers();
}

void TaskRunner::joinWorkers() {
    for (std::thread& worker : workers_) {
        worker.join();
    }
    workers_.clear();
    if (timeLimitWatch_.joinable()) {
        timeLimitWatch_.join();
    }
}

void TaskRunner::callRunEndHooks() {
    for (const auto& hook : runEndHooks_) {
        hook();
    }
}

std::unique_ptr<RuntimeEvent> TaskRunner::buildEvent(const EditorEvent& record,
                                                     const RuntimeFactory& factory, bool common) {
    auto event = std::make_unique<RuntimeEvent>();
    event->name = record.name;
    event->common = common;
    event->conditions = factory.group(record.conditions, context_);
    for (const auto& action : record.actions) {
        event->stopsTraversal = event->stopsTraversal || interruptsTraversal(action->type());
        event->actions.push_back(factory.action(*action, context_));
    }
    return event;
}

void TaskRunner::buildScenes(const RuntimeFactory& factory) {
    for (const EditorEvent& record : task_.commonEvent.events) {
        if (!record.disabled) {
            commonEvents_.push_back(buildEvent(record, factory, true));
        }
    }
    for (const EditorEvent& record : task_.commonEventLow.events) {
        if (!record.disabled) {
            lowCommonEvents_.push_back(buildEvent(record, factory, true));
        }
    }
    for (const EditorScene& record : task_.scenes) {
        auto scene = std::make_unique<Scene>();
        scene->name = record.name;
        scene->identification = buildEvent(record.sceneEvent, factory, false);
        const bool identified = scene->hasIdentification();
        if (identified) {
            scene->events = commonEvents_;
        }
        for (const EditorEvent& event : record.events) {
            if (!event.disabled) {
                scene->events.push_back(buildEvent(event, factory, false));
            }
        }
        if (identified) {
            scene->events.insert(scene->events.end(), lowCommonEvents_.begin(),
                                 lowCommonEvents_.end());
        }
        scenes_.push_back(std::move(scene));
    }
}

void TaskRunner::setSceneObserver(IMVSceneEvent* observer) {
    sceneObserver_ = observer;
    for (auto& scene : scenes_) {
        scene->observer = observer;
    }
}

bool TaskRunner::start(std::vector<RunTarget> targets) {
    {
        std::lock_guard lock(liveMutex_);
        if (liveThreads_ > 0) {
            return false;
        }
    }
    // The earlier run's workers have left their cycles; they may still be unwinding.
    joinWorkers();
    clock_->resume();
    {
        std::lock_guard lock(tasksMutex_);
        tasks_.clear();
    }
    {
        // The windows the run starts on are taken: a worker whose window goes never picks
        // another worker's.
        std::lock_guard lock(claimedMutex_);
        claimedWindows_.clear();
        for (const RunTarget& target : targets) {
            if (target.window != 0) {
                claimedWindows_.push_back(target.window);
            }
        }
    }
    {
        // A script that locked and never unlocked held only the run that has ended.
        std::lock_guard lock(exclusiveMutex_);
        exclusiveThreads_.clear();
    }
    definitions_.resetAll();
    unidentifiedReset_ = false;
    for (const auto& hook : runStartHooks_) {
        hook(task_);
    }
    for (auto& scene : scenes_) {
        scene->state.clear();
        for (RuntimeEvent* event : scene->allEvents()) {
            if (event->conditions) {
                event->conditions->clearThreadState();
            }
            for (auto& action : event->actions) {
                action->reset();
            }
        }
    }
    stopSource_ = std::stop_source();
    running_ = true;
    suspended_ = false;
    runEnd_ = RunEnd::Running;
    cyclesCompleted_ = 0;
    {
        std::lock_guard lock(liveMutex_);
        liveThreads_ = int(targets.size());
        threadsBeforeEndHooks_ = int(targets.size());
        activeTargets_ = int(targets.size());
    }
    if (runObserver_) {
        runObserver_->runStarted(int(targets.size()));
    }
    startMs_ = clock_->nowMs();
    if (targets.empty()) {
        endRun(RunEnd::TargetsFinished);
        callRunEndHooks();
    } else if (runTimeLimitSeconds_ >= 0) {
        timeLimitWatch_ = std::thread(&TaskRunner::watchTimeLimit, this);
    }
    for (RunTarget& target : targets) {
        auto info = std::make_shared<TaskInfo>();
        info->kind = target.kind;
        info->window = target.window;
        info->startWindow = target.window;
        info->child = target.child;
        info->serial = target.serial;
        info->variableOverrides = std::move(target.variableOverrides);
        info->stop = stopSource_.get_token();
        workers_.emplace_back(&TaskRunner::workerBody, this, std::move(info));
    }
    return true;
}

bool TaskRunner::endRun(RunEnd reason) {
    RunEnd expected = RunEnd::Running;
    const bool first = runEnd_.compare_exchange_strong(expected, reason);
    running_ = false;
    stopSource_.request_stop();
    clock_->stop();
    wake_.notify_all();
    { std::lock_guard lock(timeLimitMutex_); }
    timeLimitWake_.notify_all();
    std::lock_guard lock(tasksMutex_);
    for (auto& [id, task] : tasks_) {
        task->wake.notify_all();
    }
    return first;
}

void TaskRunner::stop(RunEnd reason) {
    endRun(reason);
}

void TaskRunner::suspend() {
    suspended_ = true;
    std::lock_guard lock(tasksMutex_);
    for (auto& [id, task] : tasks_) {
        task->suspended = true;
    }
}

void TaskRunner::resume() {
    suspended_ = false;
    std::lock_guard lock(tasksMutex_);
    for (auto& [id, task] : tasks_) {
        task->suspended = false;
        task->wake.notify_all();
    }
    wake_.notify_all();
}

bool TaskRunner::waitUntilIdle(std::chrono::milliseconds timeout) {
    std::unique_lock lock(liveMutex_);
    return idle_.wait_for(lock, timeout, [this] { return liveThreads_ == 0; });
}

bool TaskRunner::idle() const {
    std::lock_guard lock(liveMutex_);
    return liveThreads_ == 0;
}

bool TaskRunner::timeLimitPassed() const {
    const int limit = runTimeLimitSeconds_;
    return limit >= 0 && clock_->nowMs() - startMs_ >= std::int64_t(limit) * 1000;
}

void TaskRunner::watchTimeLimit() {
    // Polls the run clock rather than waiting for a fixed moment, so that a test clock
    // that jumps ahead ends the run too.
    constexpr std::int64_t kMaxWaitMs = 50;
    std::unique_lock lock(timeLimitMutex_);
    while (running_) {
        const std::int64_t leftMs =
            std::int64_t(runTimeLimitSeconds_.load()) * 1000 - (clock_->nowMs() - startMs_);
        if (leftMs <= 0) {
            lock.unlock();
            if (endRun(RunEnd::TimeLimit) && finishListener_) {
                finishListener_->finished(1);
            }
            return;
        }
        timeLimitWake_.wait_for(lock, std::chrono::milliseconds(std::min(leftMs, kMaxWaitMs)));
    }
}

bool TaskRunner::stopRequested() const {
    return !running_ || timeLimitPassed();
}

void TaskRunner::enterExclusive() {
    std::lock_guard lock(exclusiveMutex_);
    const std::thread::id self = std::this_thread::get_id();
    if (std::find(exclusiveThreads_.begin(), exclusiveThreads_.end(), self) ==
        exclusiveThreads_.end()) {
        exclusiveThreads_.push_back(self);
    }
}

void TaskRunner::leaveExclusive() {
    std::lock_guard lock(exclusiveMutex_);
    std::erase(exclusiveThreads_, std::this_thread::get_id());
}

bool TaskRunner::excludedByExclusiveQueue() {
    std::lock_guard lock(exclusiveMutex_);
    return !exclusiveThreads_.empty() && exclusiveThreads_.front() != std::this_thread::get_id();
}

void TaskRunner::finishCurrentTarget(int code) {
    std::shared_ptr<TaskInfo> task;
    {
        std::lock_guard lock(tasksMutex_);
        const auto it = tasks_.find(std::this_thread::get_id());
        if (it == tasks_.end()) {
            return;
        }
        task = it->second;
    }
    qCDebug(lcRunner) << "finish taskInfo hwnd:" << task->window.load();
    qCDebug(lcRunner) << "running:" << task->running.load();
    if (!task->running.exchange(false)) {
        return;
    }
    bool lastTarget = false;
    {
        std::lock_guard lock(liveMutex_);
        lastTarget = --activeTargets_ < 1;
    }
    if (lastTarget) {
        if (finishListener_) {
            finishListener_->finished(code);
        }
        endRun(code == 1 ? RunEnd::TimeLimit : RunEnd::TargetsFinished);
    }
}

bool TaskRunner::waitForTurn(TaskInfo& task, std::unique_lock<std::mutex>& lock) {
    std::atomic<bool>& suspended = concurrency_ ? task.suspended : suspended_;
    std::condition_variable& wake = concurrency_ ? task.wake : wake_;
    while (suspended && running_) {
        qCDebug(lcRunner) << "Thread is suspended.";
        // Flags are atomics set without this lock, so a wake-up can slip past: look again
        // every so often.
        wake.wait_for(lock, std::chrono::milliseconds(50));
        qCDebug(lcRunner) << "Thread is resumed.";
    }
    if (excludedByExclusiveQueue()) {
        qCDebug(lcRunner) << "checkOtherThread lockek";
        return false;
    }
    return true;
}

void TaskRunner::workerBody(const std::shared_ptr<TaskInfo>& task) {
    {
        std::lock_guard lock(tasksMutex_);
        tasks_[std::this_thread::get_id()] = task;
        task->suspended = suspended_.load();
    }
    for (const auto& [id, text] : task->variableOverrides) {
        if (MVVariable* variable = definitions_.find(id); variable && !variable->isGlobal()) {
            variable->setStartValue(text);
        }
    }
    if (runObserver_) {
        if (task->kind == TargetKind::AndroidDevice) {
            runObserver_->threadStartedOnDevice(task->serial);
        } else {
            runObserver_->threadStartedOnWindow(task->window);
        }
    }
    targets_.targetStarted(*task);

    while (running_) {
        const int intervalMs = loopIntervalMs_;
        if (intervalMs > 0) {
            clock_->sleepMs(intervalMs);
        }
        std::unique_lock lock(concurrency_ ? task->mutex : mutex_);
        if (!waitForTurn(*task, lock)) {
            continue;
        }
        if (task->kind == TargetKind::Window) {
            keepWindow(*task);
        }
        if (!runCycle(*task) || !task->running) {
            break;
        }
    }

    targets_.targetEnded(*task);
    bool last = false;
    {
        std::lock_guard lock(liveMutex_);
        last = --threadsBeforeEndHooks_ == 0;
    }
    if (last) {
        callRunEndHooks();
    }
    std::lock_guard lock(liveMutex_);
    if (--liveThreads_ == 0) {
        idle_.notify_all();
    }
}

void TaskRunner::keepWindow(TaskInfo& task) {
    const platform::WindowHandle current = task.window;
    if (current != 0 && targets_.isWindow(current)) {
        return;
    }
    std::lock_guard lock(claimedMutex_);
    std::erase(claimedWindows_, current);
    platform::WindowHandle picked = 0;
    if (windowMatcher_ && !autoPickDisabled_) {
        for (platform::WindowHandle window : targets_.candidateWindows()) {
            if (std::find(claimedWindows_.begin(), claimedWindows_.end(), window) !=
                claimedWindows_.end()) {
                qCDebug(lcRunner) << "已包含此句柄:" << window;
                continue;
            }
            if (windowMatcher_->accepts(window)) {
                picked = window;
                claimedWindows_.push_back(window);
                break;
            }
        }
    }
    task.window = picked;
    task.cycleCache.reset();
}

void TaskRunner::capture(TaskInfo& task) {
    // Converted straight out of the target's buffer into the frame kept between cycles.
    bool usable = false;
    const auto convert = [&](const platform::BgraView& view) {
        usable = convertBgraToBgr(view, task.frame, &task.frameChanged);
    };
    const bool capturable = task.kind == TargetKind::Desktop || task.kind == TargetKind::Window ||
                            task.kind == TargetKind::AndroidDevice;
    if (capturable) {
        targets_.capture(task, convert);
    }
    if (usable && runObserver_) {
        runObserver_->frameCaptured(task.frame);
    }
    if (!usable) {
        task.frame.release();
        task.frameChanged = true;
        if (targets_.displayLost()) {
            endRun(RunEnd::DisplayLost);
        } else if (runObserver_) {
            runObserver_->captureFailed();
        }
    }
}

bool TaskRunner::runCycle(TaskInfo& task) {
    if (!running_) {
        return false;
    }
    if (timeLimitPassed()) {
        if (endRun(RunEnd::TimeLimit) && finishListener_) {
            finishListener_->finished(1);
        }
        return false;
    }
    if (cycleStart_) {
        cycleStart_(task);
    }
    capture(task);
    if (!running_) {
        return false;
    }
    bool keep = false;
    if (task.currentScene) {
        keep = evaluateScene(*task.currentScene, task);
    }
    if (!keep) {
        task.currentScene = nullptr;
        for (auto& scene : scenes_) {
            if (!running_) {
                break;
            }
            if (evaluateScene(*scene, task)) {
                task.currentScene = scene.get();
                break;
            }
        }
    }
    ++task.cycleCount;
    ++cyclesCompleted_;
    if (runObserver_) {
        runObserver_->cycleEnded(task);
    }
    return true;
}

void TaskRunner::resetEventGroups(Scene& scene) {
    for (auto& event : scene.events) {
        if (event->conditions) {
            event->conditions->reset();
        }
    }
}

bool TaskRunner::evaluateScene(Scene& scene, TaskInfo& task) {
    Scene::ThreadState& state = scene.state.get();
    if (loopMode_ == kSingleEventMode) {
        state.lastFired = -1;
    }
    bool recognised = false;
    const bool identified = scene.hasIdentification();
    if (identified) {
        recognised = scene.identification->conditions->evaluate(task, true);
        if (scene.observer) {
            scene.observer->identificationResult(scene, scene.identification->conditions.get(),
                                                 recognised);
        }
    } else if (!unidentifiedReset_.exchange(true)) {
        state.lastFired = -1;
        resetEventGroups(scene);
    }
    state.recognised = recognised;
    if (recognised && state.recognisedSinceMs == 0) {
        state.recognisedSinceMs = clock_->nowMs();
        runActions(*scene.identification, task);
        if (scene.observer) {
            scene.observer->sceneEntered(scene, scene.identification->conditions.get());
        }
        unidentifiedReset_ = false;
    } else if (!recognised && state.recognisedSinceMs != 0) {
        state.lastFired = -1;
        state.recognisedSinceMs = 0;
        resetEventGroups(scene);
    }
    if (!recognised && identified) {
        return false;
    }

    if (scene.observer) {
        scene.observer->traversalBegins(task.frame, scene);
    }
    prepareScreenItems(scene.events, task, jobRunner_);
    const int count = int(scene.events.size());
    for (int i = 0; i < count && running_ && task.running; ++i) {
        if (i <= state.lastFired) {
            continue;
        }
        RuntimeEvent& event = *scene.events[size_t(i)];
        const bool fired = !event.conditions || event.conditions->evaluate(task);
        if (scene.observer) {
            scene.observer->eventEvaluated(scene, event, fired);
        }
        if (fired) {
            state.lastFired = i;
            if (scene.observer) {
                scene.observer->eventFired(scene, event);
            }
            runActions(event, task);
            if (scene.observer) {
                scene.observer->actionsDone(scene, event);
            }
            if (event.stopsTraversal) {
                break;
            }
        }
        state.lastFired = -1;
    }
    if (state.lastFired == count - 1) {
        state.lastFired = -1;
    }
    if (scene.observer) {
        scene.observer->traversalEnds(task.frame, scene);
    }
    return recognised;
}

void TaskRunner::runActions(const RuntimeEvent& event, TaskInfo& task) {
    std::vector<IAction*> actions;
    for (const auto& action : event.actions) {
        actions.push_back(action.get());
    }
    for (IAction* action : actions) {
        if (task.stop.stop_requested() || !task.running) {
            break;
        }
        if (action->needsPreparation()) {
            action->prepare(task);
        }
        const float waitSeconds = action->run(task);
        if (waitSeconds > 0) {
            clock_->sleepMs(std::int64_t(double(waitSeconds) * 1000.0));
        }
    }
}

}  // namespace autoscene::engine

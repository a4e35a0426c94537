#pragma once
// Hands a run's reports to several observers, in the order they were added.

#include <vector>

#include "engine/RunObservers.h"

namespace autoscene::engine {

class ObserverFanOut : public IMVSceneEvent, public IRunObserver {
public:
    void add(IMVSceneEvent* scenes, IRunObserver* run) {
        scenes_.push_back(scenes);
        runs_.push_back(run);
    }

    void identificationResult(const Scene& s, const ItemGroup* c, bool r) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.identificationResult(s, c, r); });
    }
    void sceneEntered(const Scene& s, const ItemGroup* c) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.sceneEntered(s, c); });
    }
    void eventEvaluated(const Scene& s, const RuntimeEvent& e, bool f) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.eventEvaluated(s, e, f); });
    }
    void traversalBegins(const cv::Mat& m, const Scene& s) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.traversalBegins(m, s); });
    }
    void traversalEnds(const cv::Mat& m, const Scene& s) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.traversalEnds(m, s); });
    }
    void eventFired(const Scene& s, const RuntimeEvent& e) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.eventFired(s, e); });
    }
    void actionsDone(const Scene& s, const RuntimeEvent& e) override {
        each(scenes_, [&](IMVSceneEvent& o) { o.actionsDone(s, e); });
    }
    void runStarted(int n) override {
        each(runs_, [&](IRunObserver& o) { o.runStarted(n); });
    }
    void threadStartedOnWindow(platform::WindowHandle w) override {
        each(runs_, [&](IRunObserver& o) { o.threadStartedOnWindow(w); });
    }
    void threadStartedOnDevice(const QString& s) override {
        each(runs_, [&](IRunObserver& o) { o.threadStartedOnDevice(s); });
    }
    void captureFailed() override {
        each(runs_, [](IRunObserver& o) { o.captureFailed(); });
    }
    void frameCaptured(const cv::Mat& m) override {
        each(runs_, [&](IRunObserver& o) { o.frameCaptured(m); });
    }
    void cycleEnded(const TaskInfo& t) override {
        each(runs_, [&](IRunObserver& o) { o.cycleEnded(t); });
    }

private:
    template <class Observer, class Call>
    static void each(const std::vector<Observer*>& observers, const Call& call) {
        for (Observer* observer : observers) {
            call(*observer);
        }
    }

    std::vector<IMVSceneEvent*> scenes_;
    std::vector<IRunObserver*> runs_;
};

}  // namespace autoscene::engine

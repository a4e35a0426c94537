#pragma once
// Hands a run's reports to several observers, in the order they were added.

#include <vector>

#include "engine/RunObservers.h"

namespace autoscene::engine {

class ObserverFanOut : public IMVSceneEvent, public IRunObserver {
public:
    void add(IMVSceneEvent* scenes, IRunObserver* run) {
        sceneObservers_.push_back(scenes);
        runObservers_.push_back(run);
    }

    void identificationResult(const Scene& s, const ItemGroup* c, bool r) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->identificationResult(s, c, r);
    }
    void sceneEntered(const Scene& s, const ItemGroup* c) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->sceneEntered(s, c);
    }
    void eventEvaluated(const Scene& s, const RuntimeEvent& e, bool f) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->eventEvaluated(s, e, f);
    }
    void traversalBegins(const cv::Mat& m, const Scene& s) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->traversalBegins(m, s);
    }
    void traversalEnds(const cv::Mat& m, const Scene& s) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->traversalEnds(m, s);
    }
    void eventFired(const Scene& s, const RuntimeEvent& e) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->eventFired(s, e);
    }
    void actionsDone(const Scene& s, const RuntimeEvent& e) override {
        for (IMVSceneEvent* o : sceneObservers_)
            o->actionsDone(s, e);
    }
    void runStarted(int n) override {
        for (IRunObserver* o : runObservers_)
            o->runStarted(n);
    }
    void threadStartedOnWindow(platform::WindowHandle w) override {
        for (IRunObserver* o : runObservers_)
            o->threadStartedOnWindow(w);
    }
    void threadStartedOnDevice(const QString& s) override {
        for (IRunObserver* o : runObservers_)
            o->threadStartedOnDevice(s);
    }
    void captureFailed() override {
        for (IRunObserver* o : runObservers_)
            o->captureFailed();
    }
    void frameCaptured(const cv::Mat& m) override {
        for (IRunObserver* o : runObservers_)
            o->frameCaptured(m);
    }
    void cycleEnded(const TaskInfo& t) override {
        for (IRunObserver* o : runObservers_)
            o->cycleEnded(t);
    }

private:
    std::vector<IMVSceneEvent*> sceneObservers_;
    std::vector<IRunObserver*> runObservers_;
};

}  // namespace autoscene::engine

#pragma once
// Observers of a run, called on the worker threads.

#include <QString>
#include <opencv2/core/mat.hpp>

#include "desktop/DesktopBackend.h"

namespace autoscene::engine {

class Scene;
class RuntimeEvent;
class ItemGroup;
struct TaskInfo;

class IMVSceneEvent {
public:
    virtual ~IMVSceneEvent() = default;
    virtual void identificationResult(const Scene&, const ItemGroup*, bool) {}
    virtual void sceneEntered(const Scene&, const ItemGroup*) {}
    virtual void eventEvaluated(const Scene&, const RuntimeEvent&, bool) {}
    virtual void traversalBegins(const cv::Mat&, const Scene&) {}
    virtual void traversalEnds(const cv::Mat&, const Scene&) {}
    virtual void eventFired(const Scene&, const RuntimeEvent&) {}
    virtual void actionsDone(const Scene&, const RuntimeEvent&) {}
};

class IRunObserver {
public:
    virtual ~IRunObserver() = default;
    virtual void runStarted(int) {}
    virtual void threadStartedOnWindow(platform::WindowHandle) {}
    virtual void threadStartedOnDevice(const QString&) {}
    virtual void captureFailed() {}
    // The frame just captured; the worker writes its next capture into the same pixels.
    virtual void frameCaptured(const cv::Mat&) {}
    // The cycle is over: its scene chosen, its events evaluated and their actions done.
    virtual void cycleEnded(const TaskInfo&) {}
};

class ITaskFinishListener {
public:
    virtual ~ITaskFinishListener() = default;
    // Code 1: the run time limit was reached.
    virtual void finished(int code) = 0;
};

}  // namespace autoscene::engine

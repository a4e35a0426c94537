#pragma once
// One target of a run and the worker thread that serves it.

#include <QString>
#include <any>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <stop_token>

#include "desktop/DesktopBackend.h"

namespace autoscene::engine {

class Scene;

// Kind of target (a task's `task_mode`).
enum class TargetKind : int { Invalid = 0, Desktop = 1, Window = 2, AndroidDevice = 3 };

// What a run is started on: a target and the start values of its variables.
struct RunTarget {
    TargetKind kind = TargetKind::Invalid;
    platform::WindowHandle window = 0;
    platform::WindowHandle child = 0;
    QString serial;
    std::map<int, QString> variableOverrides;
};

struct TaskInfo {
    int index = -1;
    cv::Mat frame;             // 3-channel BGR of the current cycle; empty when there is none
    bool frameChanged = true;  // whether `frame` differs from the previous cycle's
    std::atomic<platform::WindowHandle> window{0};
    platform::WindowHandle startWindow = 0;  // what a script returns the worker to
    platform::WindowHandle child = 0;
    QString serial;
    TargetKind kind = TargetKind::Invalid;
    std::any cycleCache;  // label detections of the current frame, and the like
    Scene* currentScene = nullptr;
    std::mutex mutex;
    std::condition_variable wake;
    std::map<int, QString> variableOverrides;
    std::atomic<bool> suspended{false};
    std::atomic<bool> running{true};
    std::atomic<std::int64_t> cycleCount{0};
    // The run's stop: set when it is stopped, its time is up or a stop action fires. Work
    // that can take long (typing, slides, detections, requests) gives up once it is set.
    std::stop_token stop;
};

}  // namespace autoscene::engine

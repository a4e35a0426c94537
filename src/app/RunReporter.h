#pragma once
// Prints a run as it goes: one line per scene change, fired event and action result
// (plain text, or one JSON object per line), and the summary at the end.

#include <QJsonObject>
#include <QTextStream>
#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "engine/RunObservers.h"

namespace autoscene::app {

struct RunSummary {
    std::int64_t cycles = 0;
    double seconds = 0;
    QString ended;  // "stop", "time_limit" or "interrupted"
};

class RunReporter : public engine::IMVSceneEvent, public engine::IRunObserver {
public:
    // With `trace`, every cycle also prints the scene chosen and each evaluated event's and
    // identification's condition states (scores, counts, places, errors).
    RunReporter(QTextStream& out, bool json, bool trace = false);

    void identificationResult(const engine::Scene& scene, const engine::ItemGroup* conditions,
                              bool recognised) override;
    void eventEvaluated(const engine::Scene& scene, const engine::RuntimeEvent& event,
                        bool fired) override;
    void traversalBegins(const cv::Mat& frame, const engine::Scene& scene) override;
    void eventFired(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void threadStartedOnWindow(platform::WindowHandle window) override;
    void threadStartedOnDevice(const QString& serial) override;
    void captureFailed() override;
    void frameCaptured(const cv::Mat& frame) override;

    int eventsFired() const { return eventsFired_; }
    // How a device is driven ("service" or "adb"), named in its target line. Asked on the
    // device's worker as it starts, since choosing may wait for the device.
    using RouteOf = std::function<QString(const QString& serial)>;
    void setDeviceRoutes(RouteOf routeOf) { routeOf_ = std::move(routeOf); }
    // The last frame any worker captured (empty when none was); call once the run is over.
    cv::Mat lastFrame();
    void printSummary(const RunSummary& summary);

private:
    // Small stable numbers for the worker threads, in the order they first report.
    int targetNumber();
    void print(const QJsonObject& line, const QString& text);
    void printTrace(const engine::Scene& scene, const QString& what, const QString& name,
                    const engine::ItemGroup* conditions, bool holds);

    QTextStream& out_;
    const bool json_;
    const bool trace_;
    std::mutex mutex_;
    std::map<std::thread::id, int> targets_;
    std::map<std::thread::id, platform::WindowHandle> windows_;
    std::map<int, const engine::Scene*> currentScenes_;
    std::atomic<int> eventsFired_{0};
    std::atomic<bool> captureFailureShown_{false};
    RouteOf routeOf_;
    std::mutex frameMutex_;
    cv::Mat lastFrame_;  // shares the worker's pixels, which it keeps writing into
};

}  // namespace autoscene::app

#pragma once
// Prints a run as it goes: one line per scene change, fired event and action result
// (plain text, or one JSON object per line), and the summary at the end.

#include <QJsonObject>
#include <QTextStream>
#include <atomic>
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
    RunReporter(QTextStream& out, bool json);

    void traversalBegins(const cv::Mat& frame, const engine::Scene& scene) override;
    void eventFired(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void threadStartedOnWindow(platform::WindowHandle window) override;
    void threadStartedOnDevice(const QString& serial) override;
    void captureFailed() override;

    int eventsFired() const { return eventsFired_; }
    // How each device is driven ("service" or "adb") by serial, named in its target line.
    void setDeviceRoutes(std::map<QString, QString> routes) { deviceRoutes_ = std::move(routes); }
    void printSummary(const RunSummary& summary);

private:
    // Small stable numbers for the worker threads, in the order they first report.
    int targetNumber();
    void print(const QJsonObject& line, const QString& text);

    QTextStream& out_;
    const bool json_;
    std::mutex mutex_;
    std::map<std::thread::id, int> targets_;
    std::map<int, const engine::Scene*> currentScenes_;
    std::atomic<int> eventsFired_{0};
    std::atomic<bool> captureFailureShown_{false};
    std::map<QString, QString> deviceRoutes_;
};

}  // namespace autoscene::app

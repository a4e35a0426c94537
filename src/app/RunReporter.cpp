#include "app/RunReporter.h"

#include <QJsonDocument>

#include "engine/ItemGroup.h"
#include "engine/Scene.h"
#include "playback/CycleEvidence.h"

namespace autoscene::app {

RunReporter::RunReporter(QTextStream& out, bool json, bool trace)
    : out_(out), json_(json), trace_(trace) {}

int RunReporter::targetNumber() {
    const auto [it, added] = targets_.try_emplace(std::this_thread::get_id(), 0);
    if (added) {
        it->second = int(targets_.size());
    }
    return it->second;
}

void RunReporter::print(const QJsonObject& line, const QString& text) {
    if (json_) {
        QJsonObject withWindow = line;
        if (const auto it = windows_.find(std::this_thread::get_id()); it != windows_.end()) {
            withWindow.insert("window", QString::number(it->second));
        }
        out_ << QJsonDocument(withWindow).toJson(QJsonDocument::Compact) << '\n';
    } else {
        out_ << text << '\n';
    }
    out_.flush();
}

void RunReporter::printTrace(const engine::Scene& scene, const QString& what, const QString& name,
                             const engine::ItemGroup* conditions, bool holds) {
    QJsonObject line = playback::conditionCheck(scene, what, name, conditions, holds);
    const QJsonObject states = line["conditions"].toObject();
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    line.insert("type", "trace");
    line.insert("target", target);
    print(line,
          QStringLiteral("[%1]   trace %2 \"%3\" %4: %5")
              .arg(target)
              .arg(what, name, holds ? QStringLiteral("holds") : QStringLiteral("does not hold"),
                   QString::fromUtf8(QJsonDocument(states).toJson(QJsonDocument::Compact))));
}

void RunReporter::identificationResult(const engine::Scene& scene,
                                       const engine::ItemGroup* conditions, bool recognised) {
    if (trace_) {
        printTrace(scene, QStringLiteral("identification"), scene.name, conditions, recognised);
    }
}

void RunReporter::eventEvaluated(const engine::Scene& scene, const engine::RuntimeEvent& event,
                                 bool fired) {
    if (trace_) {
        printTrace(scene, QStringLiteral("event"), event.name, event.conditions.get(), fired);
    }
}

void RunReporter::traversalBegins(const cv::Mat&, const engine::Scene& scene) {
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    const engine::Scene*& current = currentScenes_[target];
    if (trace_) {
        print({{"type", "trace"}, {"target", target}, {"scene", scene.name}, {"chosen", true}},
              QStringLiteral("[%1] trace cycle on scene \"%2\"").arg(target).arg(scene.name));
    }
    if (current == &scene) {
        return;
    }
    current = &scene;
    print({{"type", "scene"}, {"target", target}, {"scene", scene.name}},
          QStringLiteral("[%1] scene \"%2\"").arg(target).arg(scene.name));
}

void RunReporter::eventFired(const engine::Scene& scene, const engine::RuntimeEvent& event) {
    ++eventsFired_;
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    print({{"type", "event"}, {"target", target}, {"scene", scene.name}, {"event", event.name}},
          QStringLiteral("[%1] event \"%2\" fired").arg(target).arg(event.name));
}

void RunReporter::actionsDone(const engine::Scene&, const engine::RuntimeEvent& event) {
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    for (const auto& value : playback::actionResults(event)) {
        const QJsonObject result = value.toObject();
        print({{"type", "action"}, {"target", target}, {"event", event.name}, {"result", result}},
              QStringLiteral("[%1]   action %2")
                  .arg(target)
                  .arg(QString::fromUtf8(QJsonDocument(result).toJson(QJsonDocument::Compact))));
    }
}

void RunReporter::frameCaptured(const cv::Mat& frame) {
    std::lock_guard lock(frameMutex_);
    lastFrame_ = frame;
}

cv::Mat RunReporter::lastFrame() {
    std::lock_guard lock(frameMutex_);
    return lastFrame_;
}

void RunReporter::threadStartedOnWindow(platform::WindowHandle window) {
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    windows_[std::this_thread::get_id()] = window;
    print({{"type", "target"}, {"target", target}, {"window", QString::number(window)}},
          QStringLiteral("[%1] on window 0x%2").arg(target).arg(window, 0, 16));
}

void RunReporter::threadStartedOnDevice(const QString& serial) {
    const QString route = routeOf_ ? routeOf_(serial) : QString();
    std::lock_guard lock(mutex_);
    const int target = targetNumber();
    print({{"type", "target"},
           {"target", target},
           {"kind", "device"},
           {"serial", serial},
           {"route", route}},
          QStringLiteral("[%1] on device %2 (route %3)").arg(target).arg(serial, route));
}

void RunReporter::captureFailed() {
    if (captureFailureShown_.exchange(true)) {
        return;
    }
    std::lock_guard lock(mutex_);
    print({{"type", "warning"},
           {"message", "capture failed: the window or device is gone or hidden"}},
          "capture failed: the window or device is gone or hidden (shown once)");
}

void RunReporter::printSummary(const RunSummary& summary) {
    const double perSecond = summary.seconds > 0 ? double(summary.cycles) / summary.seconds : 0;
    std::lock_guard lock(mutex_);
    print({{"type", "summary"},
           {"cycles", qint64(summary.cycles)},
           {"cycles_per_second", perSecond},
           {"events_fired", eventsFired_.load()},
           {"ended", summary.ended}},
          QStringLiteral("%1 cycles in %2 s (%3 cycles/s), %4 events fired, ended: %5")
              .arg(summary.cycles)
              .arg(summary.seconds, 0, 'f', 2)
              .arg(perSecond, 0, 'f', 1)
              .arg(eventsFired_.load())
              .arg(summary.ended));
}

}  // namespace autoscene::app

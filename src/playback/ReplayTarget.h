#pragma once
// The target and clock of a replay: the recorded frames one cycle at a time, the recorded
// time of each cycle, no input sent and no waiting.

#include <atomic>
#include <opencv2/core/mat.hpp>

#include "engine/RunClock.h"
#include "engine/TargetService.h"

namespace autoscene::playback {

class ReplayClock : public engine::RunClock {
public:
    std::int64_t nowMs() const override { return nowMs_; }
    QDateTime localNow() const override { return QDateTime::fromMSecsSinceEpoch(nowMs_); }
    void sleepMs(std::int64_t) override {}
    void setNowMs(std::int64_t ms) { nowMs_ = ms; }

private:
    std::atomic<std::int64_t> nowMs_{0};
};

class ReplayTarget : public engine::ITargetService {
public:
    // What the next captures return (BGR); an empty frame fails them, as the recorded
    // capture did.
    void setFrame(const cv::Mat& bgr);

    bool capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) override;
    bool isWindow(platform::WindowHandle) override { return true; }
    std::vector<platform::WindowHandle> candidateWindows() override { return {}; }
    void mouse(const engine::TaskInfo&, platform::Point, platform::MouseOp, int) override {}
    void wheel(const engine::TaskInfo&, int, platform::Point) override {}
    void key(const engine::TaskInfo&, int, platform::KeyOp) override {}
    bool keyGroup(const engine::TaskInfo&, const std::vector<int>&) override { return true; }
    void inputText(const engine::TaskInfo&, const QString&) override {}
    QString takeInputError(const engine::TaskInfo&) override {
        return QStringLiteral("a replay sends no input");
    }

private:
    cv::Mat bgra_;
};

}  // namespace autoscene::playback

#pragma once
// A target that lives in the test process: serves frames from images and records
// every input it receives, so whole runs can be driven without a display.

#include <QString>
#include <functional>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <vector>

#include "engine/TargetService.h"

namespace autoscene::test {

struct RecordedInput {
    enum class Kind { Mouse, Wheel, Key, Text, App };
    Kind kind = Kind::Mouse;
    platform::WindowHandle window = 0;
    platform::Point point;
    int code = 0;    // mouse op, wheel steps or virtual key
    int detail = 0;  // press ms or key op
    QString text;    // typed text, or the app started as package/activity
};

class InProcessTarget : public engine::ITargetService {
public:
    // Frames are served in turn to every capture; an empty list captures nothing.
    void setFrames(const std::vector<cv::Mat>& bgr);
    void setWindows(std::vector<platform::WindowHandle> windows);
    std::vector<RecordedInput> inputs() const;
    // From now on every input is recorded but reported as not taken, for `why`.
    void refuseInput(QString why);
    QString takeInputError(const engine::TaskInfo& task) override;
    // Called after each input is recorded, outside the target's lock.
    void setInputHook(std::function<void(const RecordedInput&)> hook);

    bool capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) override;
    bool isWindow(platform::WindowHandle window) override;
    std::vector<platform::WindowHandle> candidateWindows() override;
    void mouse(const engine::TaskInfo& task, platform::Point point, platform::MouseOp op,
               int pressMs) override;
    void wheel(const engine::TaskInfo& task, int steps, platform::Point point) override;
    void key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) override;
    // Recorded as the downs and ups it stands for, entries as stored; a stop cuts it short
    // as on a real target.
    bool keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) override;
    void inputText(const engine::TaskInfo& task, const QString& text) override;
    // Every character outside Latin-1, as a target whose keyboard has no others.
    QString untypableText(const engine::TaskInfo& task, const QString& text) override;
    // Recorded; fails for packages named "missing".
    QString startApp(const engine::TaskInfo& task, const QString& package,
                     const QString& activity) override;

private:
    void record(const RecordedInput& input);

    mutable std::mutex mutex_;
    std::vector<cv::Mat> frames_;  // BGRA
    size_t next_ = 0;
    std::vector<platform::WindowHandle> windows_;
    std::vector<RecordedInput> inputs_;
    std::function<void(const RecordedInput&)> hook_;
    QString refusal_;
    QString inputError_;
};

}  // namespace autoscene::test

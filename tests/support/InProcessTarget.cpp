#include "InProcessTarget.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "keys/KeyGroupPress.h"

namespace autoscene::test {

void InProcessTarget::setFrames(const std::vector<cv::Mat>& bgr) {
    std::lock_guard lock(mutex_);
    frames_.clear();
    for (const cv::Mat& image : bgr) {
        cv::cvtColor(image, frames_.emplace_back(), cv::COLOR_BGR2BGRA);
    }
    next_ = 0;
}

void InProcessTarget::setWindows(std::vector<platform::WindowHandle> windows) {
    std::lock_guard lock(mutex_);
    windows_ = std::move(windows);
}

std::vector<RecordedInput> InProcessTarget::inputs() const {
    std::lock_guard lock(mutex_);
    return inputs_;
}

bool InProcessTarget::capture(const engine::TaskInfo&, const platform::FrameConsumer& consume) {
    std::lock_guard lock(mutex_);
    if (frames_.empty()) {
        return false;
    }
    const cv::Mat& frame = frames_[next_++ % frames_.size()];
    consume(platform::BgraView{frame.cols, frame.rows, int(frame.step), frame.ptr()});
    return true;
}

bool InProcessTarget::isWindow(platform::WindowHandle window) {
    std::lock_guard lock(mutex_);
    return std::find(windows_.begin(), windows_.end(), window) != windows_.end();
}

std::vector<platform::WindowHandle> InProcessTarget::candidateWindows() {
    std::lock_guard lock(mutex_);
    return windows_;
}

void InProcessTarget::setInputHook(std::function<void(const RecordedInput&)> hook) {
    std::lock_guard lock(mutex_);
    hook_ = std::move(hook);
}

void InProcessTarget::refuseInput(QString why) {
    std::lock_guard lock(mutex_);
    refusal_ = std::move(why);
}

QString InProcessTarget::takeInputError(const engine::TaskInfo&) {
    std::lock_guard lock(mutex_);
    return std::exchange(inputError_, {});
}

void InProcessTarget::record(const RecordedInput& input) {
    std::function<void(const RecordedInput&)> hook;
    {
        std::lock_guard lock(mutex_);
        inputs_.push_back(input);
        if (inputError_.isEmpty()) {
            inputError_ = refusal_;
        }
        hook = hook_;
    }
    if (hook) {
        hook(input);
    }
}

void InProcessTarget::mouse(const engine::TaskInfo& task, platform::Point point,
                            platform::MouseOp op, int pressMs) {
    record({RecordedInput::Kind::Mouse, task.window, point, int(op), pressMs, {}});
}

void InProcessTarget::wheel(const engine::TaskInfo& task, int steps, platform::Point point) {
    record({RecordedInput::Kind::Wheel, task.window, point, steps, 0, {}});
}

void InProcessTarget::key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) {
    record({RecordedInput::Kind::Key, task.window, {}, virtualKey, int(op), {}});
}

bool InProcessTarget::keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) {
    return platform::keys::sendKeyGroup(group, task.stop,
                                        [&](int code, platform::KeyOp op) { key(task, code, op); });
}

void InProcessTarget::inputText(const engine::TaskInfo& task, const QString& text) {
    record({RecordedInput::Kind::Text, task.window, {}, 0, 0, text});
}

QString InProcessTarget::untypableText(const engine::TaskInfo&, const QString& text) {
    return QString(text).removeIf([](QChar c) { return c.unicode() <= 0xff; });
}

QString InProcessTarget::startApp(const engine::TaskInfo& task, const QString& package,
                                  const QString& activity) {
    record({RecordedInput::Kind::App, task.window, {}, 0, 0, package + "/" + activity});
    return package == "missing" ? QStringLiteral("no such package") : QString();
}

}  // namespace autoscene::test

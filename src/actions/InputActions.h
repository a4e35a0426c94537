#pragma once
// Actions that act on the target: taps, slides, keys, text, button up, wheel, and
// starting an application.

#include <QJsonObject>
#include <QString>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "engine/IAction.h"
#include "engine/RunContext.h"

namespace autoscene::engine {
class MVVariable;
}

namespace autoscene::actions {

using engine::IAction;
using engine::TaskInfo;

// Puts the target's input error into `result` as "err", unless an earlier reason is there.
void addInputError(engine::ITargetService& targets, const TaskInfo& task, QJsonObject& result);

// Pauses of a clicking action, in whole milliseconds.
struct ClickTiming {
    float pressSeconds = 0;  // 0: a random 30 to 50 ms press
    int clickTimes = 1;
    float intervalSeconds = 0;  // between repetitions
};

class TapAction : public IAction {
public:
    TapAction(engine::RunContext& context, engine::MVVariable* points, platform::MouseOp op,
              ClickTiming timing, float pointIntervalSeconds, float waitSeconds);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    engine::MVVariable* points_;
    const platform::MouseOp op_;
    const ClickTiming timing_;
    const float pointIntervalSeconds_;  // between the points of a "|" list
};

// Left down at the first place, moves in 50 ms ticks through the others, left up.
class MVSlideAction : public IAction {
public:
    MVSlideAction(engine::RunContext& context, std::vector<engine::MVVariable*> places,
                  std::vector<float> times, int segmentMs, float waitSeconds);
    float run(TaskInfo& task) override;

    struct Step {
        platform::Point point;
        int waitMs = 0;
    };
    // The moves of one segment: from the slide's first point towards `to` (each
    // segment starts its path again from the first point), the last landing on `to`.
    static std::vector<Step> segmentSteps(platform::Point first, platform::Point to,
                                          int durationMs);

private:
    engine::RunContext& context_;
    const std::vector<engine::MVVariable*> places_;
    const std::vector<float> times_;
    const int segmentMs_;
};

class KeyAction : public IAction {
public:
    KeyAction(engine::RunContext& context, int eventType, int virtualKey, std::vector<int> group,
              float waitSeconds);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const int eventType_;
    const int virtualKey_;
    const std::vector<int> group_;
};

class InputAction : public IAction {
public:
    InputAction(engine::RunContext& context, QString text, engine::MVVariable* variable,
                float waitSeconds);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const QString text_;
    engine::MVVariable* variable_;  // typed instead of the text when set
};

class MouseUpAction : public IAction {
public:
    MouseUpAction(engine::RunContext& context, platform::MouseOp op, float waitSeconds);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const platform::MouseOp op_;
};

class MouseWheelAction : public IAction {
public:
    MouseWheelAction(engine::RunContext& context, int steps, engine::MVVariable* point,
                     float waitSeconds);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const int steps_;
    engine::MVVariable* point_;
};

// A program on a desktop target; on a device, the path is the package to start.
class MVStartAppAction : public IAction {
public:
    MVStartAppAction(engine::RunContext& context, QString path, engine::MVVariable* pathVariable);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const QString path_;
    engine::MVVariable* pathVariable_;
};

// Starts a package (and an activity of it, when given) on a device target.
class MVADBAppAction : public IAction {
public:
    MVADBAppAction(engine::RunContext& context, QString package,
                   engine::MVVariable* packageVariable, QString activity,
                   engine::MVVariable* activityVariable);
    float run(TaskInfo& task) override;

private:
    engine::RunContext& context_;
    const QString package_;
    engine::MVVariable* packageVariable_;
    const QString activity_;
    engine::MVVariable* activityVariable_;
};

}  // namespace autoscene::actions

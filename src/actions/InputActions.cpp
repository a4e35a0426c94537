#include "actions/InputActions.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <QProcess>
#include <algorithm>

#include "engine/MVVariable.h"
#include "engine/RandomPick.h"
#include "engine/RectList.h"
#include "engine/RunClock.h"
#include "engine/TargetService.h"

namespace autoscene::actions {

Q_LOGGING_CATEGORY(lcActions, "autoscene.actions")

using engine::RunContext;
using platform::MouseOp;
using platform::Point;

namespace {

QJsonObject pointJson(Point point) {
    return {{"x", point.x}, {"y", point.y}};
}

Point randomPoint(const QRect& rect) {
    const QPoint p = engine::randomPointIn(rect);
    return {p.x(), p.y()};
}

std::vector<QRect> placesOf(engine::MVVariable* variable) {
    return variable ? engine::parseRectList(variable->value()) : std::vector<QRect>{};
}

void sleepSeconds(RunContext& context, float seconds) {
    context.clock.sleepMs(engine::secondsToMs(seconds));
}

}  // namespace

void addInputError(engine::ITargetService& targets, const TaskInfo& task, QJsonObject& result) {
    const QString error = targets.takeInputError(task);
    if (!error.isEmpty() && !result.contains(QStringLiteral("err"))) {
        result.insert(QStringLiteral("err"), error);
    }
}

TapAction::TapAction(RunContext& context, engine::MVVariable* points, MouseOp op,
                     ClickTiming timing, float pointIntervalSeconds, float waitSeconds)
    : IAction(1, waitSeconds),
      context_(context),
      points_(points),
      op_(op),
      timing_(timing),
      pointIntervalSeconds_(pointIntervalSeconds) {}

float TapAction::run(TaskInfo& task) {
    QJsonArray clicked;
    QString refused;
    const std::vector<QRect> places = placesOf(points_);
    const int count = std::max(1, timing_.clickTimes);
    for (int r = 0; r < count && !places.empty(); ++r) {
        if (r > 0 && timing_.intervalSeconds > 0) {
            sleepSeconds(context_, timing_.intervalSeconds);
        }
        for (const QRect& place : places) {
            const int pressMs = engine::pressTimeMs(timing_.pressSeconds);
            const Point point = randomPoint(place);
            qCDebug(lcActions) << "tapaction point:" << point.x << point.y;
            if (const QString why = context_.targets.refusesPoint(task, point); !why.isEmpty()) {
                refused = why;
                continue;
            }
            clicked.append(pointJson(point));
            context_.targets.mouse(task, point, op_, pressMs);
            if (pointIntervalSeconds_ > 0) {
                sleepSeconds(context_, pointIntervalSeconds_);
            }
        }
    }
    QJsonObject result{{"type", type()}, {"points", clicked}};
    if (!refused.isEmpty()) {
        result.insert("err", refused);
    }
    addInputError(context_.targets, task, result);
    setResult(result);
    return waitSeconds();
}

MVSlideAction::MVSlideAction(RunContext& context, std::vector<engine::MVVariable*> places,
                             std::vector<float> times, int segmentMs, float waitSeconds)
    : IAction(7, waitSeconds),
      context_(context),
      places_(std::move(places)),
      times_(std::move(times)),
      segmentMs_(segmentMs) {}

std::vector<MVSlideAction::Step> MVSlideAction::segmentSteps(Point first, Point to,
                                                             int durationMs) {
    constexpr int kTickMs = 50;
    const int steps = std::max(1, durationMs / kTickMs);
    const int dx = (to.x - first.x) / steps;
    const int dy = (to.y - first.y) / steps;
    std::vector<Step> path;
    for (int k = 1; k <= steps; ++k) {
        Step step;
        step.point = k == steps ? to : Point{first.x + k * dx, first.y + k * dy};
        step.waitMs = kTickMs * k > durationMs ? std::max(0, durationMs - kTickMs * k) : kTickMs;
        path.push_back(step);
    }
    return path;
}

float MVSlideAction::run(TaskInfo& task) {
    QJsonArray visited;
    std::vector<Point> points;
    for (engine::MVVariable* place : places_) {
        const std::vector<QRect> rects = placesOf(place);
        if (!rects.empty()) {
            points.push_back(randomPoint(rects.front()));
            visited.append(pointJson(points.back()));
        }
    }
    bool cut = false;
    if (!points.empty()) {
        context_.targets.mouse(task, points[0], MouseOp::LeftDown, 0);
        for (size_t i = 1; i < points.size() && !cut; ++i) {
            const size_t pair = 2 * (i - 1);
            sleepSeconds(context_, pair < times_.size() ? times_[pair] : 0.0f);
            const int durationMs =
                pair + 1 < times_.size() ? int(engine::secondsToMs(times_[pair + 1])) : segmentMs_;
            for (const Step& step : segmentSteps(points[0], points[i], durationMs)) {
                cut = task.stop.stop_requested();
                if (cut) {
                    break;
                }
                context_.targets.mouse(task, step.point, MouseOp::Move, 0);
                context_.clock.sleepMs(step.waitMs);
            }
        }
        // Released also when a stop cut the slide short, so that no button stays held.
        context_.targets.mouse(task, points.back(), MouseOp::LeftUp, 0);
    }
    QJsonObject result{{"type", type()}, {"points", visited}};
    if (cut) {
        result.insert("err", QStringLiteral("stopped before the slide ended"));
    }
    addInputError(context_.targets, task, result);
    setResult(result);
    return waitSeconds();
}

KeyAction::KeyAction(RunContext& context, int eventType, int virtualKey, std::vector<int> group,
                     float waitSeconds)
    : IAction(11, waitSeconds),
      context_(context),
      eventType_(eventType),
      virtualKey_(virtualKey),
      group_(std::move(group)) {}

float KeyAction::run(TaskInfo& task) {
    bool whole = true;
    switch (eventType_) {
        case 0:
            context_.targets.key(task, virtualKey_, platform::KeyOp::Click);
            break;
        case 1:
            context_.targets.key(task, virtualKey_, platform::KeyOp::Down);
            break;
        case 2:
            context_.targets.key(task, virtualKey_, platform::KeyOp::Up);
            break;
        case 3:
            whole = context_.targets.keyGroup(task, group_);
            break;
        default:
            break;
    }
    QJsonArray group;
    for (int code : group_) {
        group.append(code);
    }
    QJsonObject result{{"type", type()},
                       {"action", eventType_},
                       {"key", eventType_ == 3 ? QJsonValue(group) : QJsonValue(virtualKey_)}};
    if (!whole) {
        result.insert("err", QStringLiteral("stopped before every key of the group was down; "
                                            "the keys down were released"));
    }
    addInputError(context_.targets, task, result);
    setResult(result);
    return waitSeconds();
}

InputAction::InputAction(RunContext& context, QString text, engine::MVVariable* variable,
                         float waitSeconds)
    : IAction(6, waitSeconds), context_(context), text_(std::move(text)), variable_(variable) {}

float InputAction::run(TaskInfo& task) {
    // Typed a few characters at a time, so that a stop cuts a long text short.
    constexpr qsizetype kChunk = 16;
    const QString text = variable_ ? variable_->value() : text_;
    const QString untypable = context_.targets.untypableText(task, text);
    qsizetype typed = 0;
    while (typed < text.size() && !task.stop.stop_requested()) {
        qsizetype end = std::min(text.size(), typed + kChunk);
        if (end < text.size() && text.at(end - 1).isHighSurrogate()) {
            ++end;
        }
        context_.targets.inputText(task, text.mid(typed, end - typed));
        typed = end;
    }
    QJsonObject result{{"type", type()}, {"text", text}};
    if (typed < text.size()) {
        result.insert("err", QStringLiteral("stopped before the whole text was typed"));
        result.insert("typed", text.left(typed));
    } else if (!untypable.isEmpty()) {
        result.insert("err", QStringLiteral("not typed: ") + untypable);
    }
    addInputError(context_.targets, task, result);
    setResult(result);
    return waitSeconds();
}

MouseUpAction::MouseUpAction(RunContext& context, MouseOp op, float waitSeconds)
    : IAction(17, waitSeconds), context_(context), op_(op) {}

float MouseUpAction::run(TaskInfo& task) {
    context_.targets.mouse(task, {-1, -1}, op_, 0);
    QJsonObject result{{"type", type()}};
    addInputError(context_.targets, task, result);
    setResult(result);
    return waitSeconds();
}

MouseWheelAction::MouseWheelAction(RunContext& context, int steps, engine::MVVariable* point,
                                   float waitSeconds)
    : IAction(13, waitSeconds), context_(context), steps_(steps), point_(point) {}

float MouseWheelAction::run(TaskInfo& task) {
    setResult({{"type", type()}});
    if (task.kind == engine::TargetKind::AndroidDevice) {
        return 0.0f;
    }
    const std::vector<QRect> places = placesOf(point_);
    const Point point = places.empty() ? Point{-1, -1} : randomPoint(places.front());
    context_.targets.wheel(task, steps_, point);
    return waitSeconds();
}

MVStartAppAction::MVStartAppAction(engine::RunContext& context, QString path,
                                   engine::MVVariable* pathVariable)
    : IAction(16, 0.0f), context_(context), path_(std::move(path)), pathVariable_(pathVariable) {}

float MVStartAppAction::run(TaskInfo& task) {
    const QString path = pathVariable_ ? pathVariable_->value() : path_;
    if (task.kind == engine::TargetKind::AndroidDevice) {
        setResult({{"type", type()},
                   {"app_path", path},
                   {"err", context_.targets.startApp(task, path, {})}});
        return 0.0f;
    }
    // Never deleted on purpose: the program must outlive the action and the run.
    auto* process = new QProcess;
    process->setProgram(path);
    process->start(QIODevice::ReadWrite);
    const bool started = process->waitForStarted(30000);
    setResult({{"type", type()},
               {"app_path", path},
               {"err", started ? QString() : process->errorString()}});
    return 0.0f;
}

MVADBAppAction::MVADBAppAction(engine::RunContext& context, QString package,
                               engine::MVVariable* packageVariable, QString activity,
                               engine::MVVariable* activityVariable)
    : IAction(22, 0.0f),
      context_(context),
      package_(std::move(package)),
      packageVariable_(packageVariable),
      activity_(std::move(activity)),
      activityVariable_(activityVariable) {}

float MVADBAppAction::run(TaskInfo& task) {
    const QString package = packageVariable_ ? packageVariable_->value() : package_;
    const QString activity = activityVariable_ ? activityVariable_->value() : activity_;
    setResult({{"type", type()},
               {"package", package},
               {"activity", activity},
               {"err", context_.targets.startApp(task, package, activity)}});
    return 0.0f;
}

}  // namespace autoscene::actions

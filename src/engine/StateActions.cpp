#include "engine/StateActions.h"

#include <QRegularExpression>

#include "engine/MVVariable.h"
#include "engine/RandomPick.h"
#include "engine/RunClock.h"
#include "engine/RuntimeDefinitions.h"

namespace autoscene::engine {

VariableAction::VariableAction(Kind kind, MVVariable* variable, QString literal, MVVariable* source)
    : IAction(3, 0.0f),
      kind_(kind),
      variable_(variable),
      literal_(std::move(literal)),
      source_(source) {}

QString VariableAction::newValue(const QString& current, QString& error) const {
    if (kind_ == Kind::Set) {
        return source_ ? source_->value() : literal_;
    }
    static const QRegularExpression integer(QStringLiteral("^\\-?\\d+$"));
    bool ok = false;
    const qlonglong number = current.toLongLong(&ok);
    if (!integer.match(current).hasMatch() || !ok) {
        error = variable_->name() + QStringLiteral("不是数字(") + current + QLatin1Char(')');
        return current;
    }
    return QString::number(kind_ == Kind::Plus ? number + 1 : number - 1);
}

float VariableAction::run(TaskInfo&) {
    QJsonObject result{{QStringLiteral("type"), type()}, {QStringLiteral("err"), QString()}};
    if (!variable_) {
        result[QStringLiteral("err")] = QStringLiteral("variable not found");
        setResult(result);
        return 0.0f;
    }
    const QString original = variable_->value();
    QString error;
    if (kind_ == Kind::Reset) {
        variable_->startThread();
    } else {
        const QString value = newValue(original, error);
        if (error.isEmpty()) {
            variable_->setValue(value);
        }
    }
    result[QStringLiteral("original")] = original;
    result[QStringLiteral("modify")] = variable_->value();
    result[QStringLiteral("err")] = error;
    setResult(result);
    return 0.0f;
}

MVResetAllVariableAction::MVResetAllVariableAction(RuntimeDefinitions& definitions,
                                                   std::vector<int> exclude)
    : IAction(9, 0.0f), definitions_(definitions), exclude_(std::move(exclude)) {}

float MVResetAllVariableAction::run(TaskInfo&) {
    definitions_.resetAllExcept(exclude_);
    setResult({{QStringLiteral("type"), type()}});
    return 0.0f;
}

DelayAction::DelayAction(int minSeconds, int maxSeconds, RunClock& clock)
    : IAction(14, 0.0f), minSeconds_(minSeconds), maxSeconds_(maxSeconds), clock_(clock) {}

float DelayAction::run(TaskInfo&) {
    const std::int64_t delay =
        std::int64_t(minSeconds_) + randomUpTo(std::int64_t(maxSeconds_) - minSeconds_);
    setResult({{QStringLiteral("type"), type()}, {QStringLiteral("delay"), qint64(delay)}});
    clock_.sleepMs(delay * 1000);
    return 0.0f;
}

float StopAction::run(TaskInfo&) {
    setResult({{QStringLiteral("type"), type()}});
    control_.stopByTask();
    return 0.0f;
}

}  // namespace autoscene::engine

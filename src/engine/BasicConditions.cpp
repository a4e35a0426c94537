#include "engine/BasicConditions.h"

#include <QStringList>

#include "engine/MVAlarm.h"
#include "engine/MVTimer.h"
#include "engine/MVVariable.h"

namespace autoscene::engine {

bool compareVariableText(int op, const QString& left, const QString& right) {
    auto numbers = [&](double& l, double& r) {
        bool leftOk = false;
        bool rightOk = false;
        l = left.trimmed().toDouble(&leftOk);
        r = right.trimmed().toDouble(&rightOk);
        return leftOk && rightOk;
    };
    auto contains = [&] {
        if (left.contains(QLatin1Char('|'))) {
            return left.split(QLatin1Char('|')).contains(right);
        }
        return left.contains(right);
    };
    double l = 0;
    double r = 0;
    switch (op) {
        case 0:
            return left == right;
        case 1:
            return left != right;
        case 2:
            return numbers(l, r) && l > r;
        case 3:
            return numbers(l, r) && l < r;
        case 4:
            return contains();
        case 5:
            return !contains();
        default:
            return false;
    }
}

VariableCondition::VariableCondition(int relation, MVVariable* variable,
                                     MVVariable* compareVariable, QString compareValue, int op)
    : ICondition(2, relation),
      variable_(variable),
      compareVariable_(compareVariable),
      compareValue_(std::move(compareValue)),
      op_(op) {}

bool VariableCondition::evaluate(TaskInfo&) {
    const QString left = variable_ ? variable_->value() : QString();
    const QString right = compareVariable_ ? compareVariable_->value() : compareValue_;
    {
        std::lock_guard lock(operandsMutex_);
        operands_[std::this_thread::get_id()] = {left, right};
    }
    return setOutcome(variable_ && compareVariableText(op_, left, right));
}

QJsonObject VariableCondition::describe(std::thread::id thread) const {
    QJsonObject status = ICondition::describe(thread);
    std::lock_guard lock(operandsMutex_);
    if (const auto it = operands_.find(thread); it != operands_.end()) {
        status.insert(QStringLiteral("left"), it->second.left);
        status.insert(QStringLiteral("right"), it->second.right);
    }
    return status;
}

bool TimerCondition::evaluate(TaskInfo&) {
    return setOutcome(timer_ && timer_->fire());
}

QJsonObject TimerCondition::describe(std::thread::id thread) const {
    QJsonObject status = ICondition::describe(thread);
    if (timer_) {
        status.insert(QStringLiteral("name"), timer_->name());
    }
    return status;
}

bool AlarmCondition::evaluate(TaskInfo&) {
    return setOutcome(alarm_ && alarm_->fire());
}

QJsonObject AlarmCondition::describe(std::thread::id thread) const {
    QJsonObject status = ICondition::describe(thread);
    if (alarm_) {
        status.insert(QStringLiteral("name"), alarm_->name());
    }
    return status;
}

}  // namespace autoscene::engine

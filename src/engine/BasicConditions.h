#pragma once
// Conditions on run state: variables, timers and alarms.

#include <QString>

#include "engine/ICondition.h"
#include "system/PerThread.h"

namespace autoscene::engine {

class MVVariable;
class MVTimer;
class MVAlarm;

// Comparisons 0 to 5: equal, not equal, greater, less, contains, does not contain.
bool compareVariableText(int op, const QString& left, const QString& right);

class VariableCondition : public ICondition {
public:
    VariableCondition(int relation, MVVariable* variable, MVVariable* compareVariable,
                      QString compareValue, int op);
    bool evaluate(TaskInfo& task) override;
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("var"); }

private:
    struct Operands {
        QString left;
        QString right;
    };
    MVVariable* variable_;
    MVVariable* compareVariable_;  // null: compare with compareValue_
    const QString compareValue_;
    const int op_;
    mutable std::mutex operandsMutex_;
    std::unordered_map<std::thread::id, Operands> operands_;
};

class TimerCondition : public ICondition {
public:
    TimerCondition(int relation, MVTimer* timer) : ICondition(3, relation), timer_(timer) {}
    bool evaluate(TaskInfo& task) override;
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("timer"); }

private:
    MVTimer* timer_;
};

class AlarmCondition : public ICondition {
public:
    AlarmCondition(int relation, MVAlarm* alarm) : ICondition(4, relation), alarm_(alarm) {}
    bool evaluate(TaskInfo& task) override;
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("alarm"); }

private:
    MVAlarm* alarm_;
};

}  // namespace autoscene::engine

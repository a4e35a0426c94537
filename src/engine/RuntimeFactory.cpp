#include "RuntimeFactory.h"

#include <QLoggingCategory>

#include "BasicConditions.h"
#include "EditorActions.h"
#include "EditorConditions.h"
#include "ItemGroup.h"
#include "MVAlarm.h"
#include "MVTimer.h"
#include "RuntimeDefinitions.h"

namespace autoscene::engine {

Q_LOGGING_CATEGORY(lcFactory, "autoscene.engine.factory")

using namespace autoscene::model;

namespace {

// A condition kind this build cannot evaluate: never holds, and says why.
class UnsupportedCondition : public ICondition {
public:
    UnsupportedCondition(int type, int relation) : ICondition(type, relation) {}
    bool evaluate(TaskInfo&) override { return setOutcome(false); }
    QJsonObject describe(std::thread::id thread) const override {
        QJsonObject status = ICondition::describe(thread);
        status.insert(QStringLiteral("err"),
                      QStringLiteral("unsupported condition type %1").arg(type()));
        return status;
    }

protected:
    QString typeWord() const override { return QStringLiteral("unsupported"); }
};

class UnsupportedAction : public IAction {
public:
    explicit UnsupportedAction(int type) : IAction(type, 0.0f) {}
    float run(TaskInfo&) override {
        setResult(
            {{QStringLiteral("type"), type()},
             {QStringLiteral("error"), QStringLiteral("unsupported action type %1").arg(type())}});
        return 0.0f;
    }
};

}  // namespace

RuntimeFactory::RuntimeFactory() {
    addCondition(EditorVariableCondition::kType,
                 [](const IEditorCondition& record, RunContext& context) {
                     const auto& r = static_cast<const EditorVariableCondition&>(record);
                     return std::make_unique<VariableCondition>(
                         r.relation(), context.definitions.find(r.variableId),
                         r.isVariableCompare ? context.definitions.find(r.compareId) : nullptr,
                         r.compareValue, r.state);
                 });
    addCondition(EditorTimerCondition::kType,
                 [](const IEditorCondition& record, RunContext& context) {
                     const auto& r = static_cast<const EditorTimerCondition&>(record);
                     return std::make_unique<TimerCondition>(
                         r.relation(), context.definitions.findAs<MVTimer>(r.variableId));
                 });
    addCondition(EditorAlarmCondition::kType,
                 [](const IEditorCondition& record, RunContext& context) {
                     const auto& r = static_cast<const EditorAlarmCondition&>(record);
                     return std::make_unique<AlarmCondition>(
                         r.relation(), context.definitions.findAs<MVAlarm>(r.variableId));
                 });
}

void RuntimeFactory::addCondition(int type, ConditionBuilder builder) {
    conditions_[type] = std::move(builder);
}

void RuntimeFactory::addAction(int type, ActionBuilder builder) {
    actions_[type] = std::move(builder);
}

std::unique_ptr<ItemGroup> RuntimeFactory::group(const IEditorCondition& record,
                                                 RunContext& context) const {
    const auto& editorGroup = static_cast<const EditorGroupCondition&>(record);
    auto group = std::make_unique<ItemGroup>(editorGroup.relation());
    for (const auto& member : editorGroup.items()) {
        group->append(condition(*member, context));
    }
    return group;
}

std::unique_ptr<ICondition> RuntimeFactory::condition(const IEditorCondition& record,
                                                      RunContext& context) const {
    if (record.type() == EditorGroupCondition::kType) {
        return group(record, context);
    }
    const auto it = conditions_.find(record.type());
    if (it == conditions_.end()) {
        qCWarning(lcFactory) << "no runtime condition for type" << record.type();
        return std::make_unique<UnsupportedCondition>(record.type(), record.relation());
    }
    return it->second(record, context);
}

std::unique_ptr<IAction> RuntimeFactory::action(const IEditorAction& record,
                                                RunContext& context) const {
    const auto it = actions_.find(record.type());
    if (it == actions_.end()) {
        qCWarning(lcFactory) << "no runtime action for type" << record.type();
        return std::make_unique<UnsupportedAction>(record.type());
    }
    return it->second(record, context);
}

}  // namespace autoscene::engine

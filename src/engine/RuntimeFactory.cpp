#include "engine/RuntimeFactory.h"

#include <stdexcept>
#include <string>

#include <QLoggingCategory>

#include "engine/BasicConditions.h"
#include "engine/ItemGroup.h"
#include "engine/MVAlarm.h"
#include "engine/MVTimer.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/StateActions.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"

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
    addCondition<EditorVariableCondition>(
        [](const EditorVariableCondition& r, RunContext& context) {
            return std::make_unique<VariableCondition>(
                r.relation(), context.definitions.find(r.variableId),
                r.isVariableCompare ? context.definitions.find(r.compareId) : nullptr,
                r.compareValue, r.state);
        });
    addCondition<EditorTimerCondition>([](const EditorTimerCondition& r, RunContext& context) {
        return std::make_unique<TimerCondition>(r.relation(),
                                                context.definitions.findAs<MVTimer>(r.variableId));
    });
    addCondition<EditorAlarmCondition>([](const EditorAlarmCondition& r, RunContext& context) {
        return std::make_unique<AlarmCondition>(r.relation(),
                                                context.definitions.findAs<MVAlarm>(r.variableId));
    });
    addAction<EditorVariableAction>([](const EditorVariableAction& r, RunContext& context) {
        const int kind = r.changeType >= 0 && r.changeType <= 3 ? r.changeType : 0;
        return std::make_unique<VariableAction>(
            VariableAction::Kind(kind), context.definitions.find(r.variableId), r.changeValue,
            r.isVariableChange ? context.definitions.find(r.contentVariableId) : nullptr);
    });
    addAction<EditorResetAllAction>([](const EditorResetAllAction& r, RunContext& context) {
        return std::make_unique<MVResetAllVariableAction>(context.definitions, r.exclude);
    });
    addAction<EditorDelayAction>([](const EditorDelayAction& r, RunContext& context) {
        return std::make_unique<DelayAction>(r.min, r.max, context.clock);
    });
    addAction<EditorStopAction>([](const EditorStopAction&, RunContext& context) {
        return std::make_unique<StopAction>(context.control);
    });
}

void RuntimeFactory::addCondition(int type, ConditionBuilder builder) {
    if (!conditions_.emplace(type, std::move(builder)).second) {
        throw std::logic_error("condition type " + std::to_string(type) + " registered twice");
    }
}

void RuntimeFactory::addAction(int type, ActionBuilder builder) {
    if (!actions_.emplace(type, std::move(builder)).second) {
        throw std::logic_error("action type " + std::to_string(type) + " registered twice");
    }
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

#include "script/JavaScriptCondition.h"

#include <QLoggingCategory>

#include "script/ScriptRun.h"

namespace autoscene::script {

Q_LOGGING_CATEGORY(lcScriptCondition, "autoscene.script.condition")

JavaScriptCondition::JavaScriptCondition(int relation, QString code, engine::RunContext& context,
                                         platform::IWindowControl* windows)
    : ICondition(kType, relation), code_(std::move(code)), context_(context), windows_(windows) {}

bool JavaScriptCondition::evaluate(engine::TaskInfo& task) {
    const ScriptResult result = runScript(context_, task, code_, windows_);
    if (!result.exception.isEmpty()) {
        qCDebug(lcScriptCondition).noquote()
            << "javascript exception:" << shownText(result.exception);
    }
    results_.get() = shownText(result.text);
    return setOutcome(result.exception.isEmpty() && result.text == QStringLiteral("true"));
}

void JavaScriptCondition::clearThreadState() {
    ICondition::clearThreadState();
    results_.clear();
}

QJsonObject JavaScriptCondition::describe(std::thread::id thread) const {
    QJsonObject status = ICondition::describe(thread);
    const QString* result = results_.find(thread);
    status[QStringLiteral("result")] = result ? *result : QString();
    return status;
}

}  // namespace autoscene::script

#include "script/MVJavaScriptAction.h"

#include <QLoggingCategory>

#include "engine/MVVariable.h"
#include "script/ScriptRun.h"

namespace autoscene::script {

Q_LOGGING_CATEGORY(lcScriptAction, "autoscene.script.action")

MVJavaScriptAction::MVJavaScriptAction(QString code, engine::MVVariable* variable,
                                       engine::RunContext& context,
                                       platform::IWindowControl* windows)
    : IAction(kType, 0.0f),
      code_(std::move(code)),
      variable_(variable),
      context_(context),
      windows_(windows) {}

float MVJavaScriptAction::run(engine::TaskInfo& task) {
    const ScriptResult result = runScript(context_, task, code_, windows_);
    if (variable_) {
        variable_->setValue(result.text);
    }
    // The record is for the run view; the variable holds the whole text.
    const QString shown = shownText(result.text);
    const QString log = variable_ ? QStringLiteral("%1 = %2").arg(variable_->name(), shown) : shown;
    qCDebug(lcScriptAction).noquote() << "javascript result:" << log;
    setResult({{QStringLiteral("type"), type()},
               {QStringLiteral("result"), shown},
               {QStringLiteral("variable"), variable_ ? variable_->name() : QString()},
               {QStringLiteral("log"), log},
               {QStringLiteral("exception"), shownText(result.exception)}});
    return 0.0f;
}

}  // namespace autoscene::script

#include "script/ScriptRun.h"

#include "script/Clipboard.h"

namespace autoscene::script {

namespace {

constexpr qsizetype kShownCharacters = 2000;

}  // namespace

ScriptResult runScript(const engine::RunContext& context, engine::TaskInfo& worker,
                       const QString& code, platform::IWindowControl* windows) {
    ScriptEngineHolder holder;
    holder.prepareRuntime(ScriptContext{context.task, &context.definitions, &worker,
                                        &context.control, applicationClipboard(), windows});
    return holder.evaluate(code);
}

QString shownText(const QString& text) {
    if (text.size() <= kShownCharacters) {
        return text;
    }
    return text.left(kShownCharacters) +
           QStringLiteral("… (%1 characters in all)").arg(text.size());
}

}  // namespace autoscene::script

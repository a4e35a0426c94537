#pragma once
// One script engine for one evaluation: the globals `http`, `auto`, `image`, `file` and
// `sleep`, the variables as global strings, and the code's completion value as text.
// Made per evaluation and dropped after it; nothing of a script survives.

#include <QJSEngine>
#include <QJSValue>
#include <QString>
#include <memory>
#include <optional>

#include "script/ScriptContext.h"

namespace autoscene::script {

struct ScriptResult {
    QString text;  // the completion value; empty for undefined
    // The text of the error the script raised (then also `text`); empty when none.
    QString exception;
    bool interrupted = false;  // a stop of the run ended it
};

class JSHttp;

class ScriptEngineHolder {
public:
    ScriptEngineHolder();
    ~ScriptEngineHolder();
    ScriptEngineHolder(const ScriptEngineHolder&) = delete;
    ScriptEngineHolder& operator=(const ScriptEngineHolder&) = delete;

    // The globals, and the run's variables with their current values.
    void prepareRuntime(const ScriptContext& context);
    // The globals, and the task's variable definitions with their initial values: the
    // code editors' test run, without a run.
    void prepareEditor(const model::TaskDocument& task);

    // Runs `code`; a run's stop interrupts it.
    ScriptResult evaluate(const QString& code);

private:
    void addGlobals(const ScriptContext& context);
    // Skips names a script cannot use as identifiers: empty, or starting with a digit.
    void publishVariable(const QString& name, const QString& value);

    std::unique_ptr<QJSEngine> engine_;
    JSHttp* http_ = nullptr;  // owned by the engine
    QJSValue last_;
    std::optional<ScriptContext> context_;
};

}  // namespace autoscene::script

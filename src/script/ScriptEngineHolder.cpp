#include "script/ScriptEngineHolder.h"

#include <QRegularExpression>

#include "engine/RunContext.h"
#include "engine/RuntimeDefinitions.h"
#include "model/Definitions.h"
#include "model/TaskDocument.h"
#include "script/AutoPlugin.h"
#include "script/EvaluationWatch.h"
#include "script/JSFile.h"
#include "script/JSHttp.h"
#include "script/JSImage.h"
#include "script/JSMorvane.h"

namespace autoscene::script {

ScriptEngineHolder::ScriptEngineHolder() : engine_(std::make_unique<QJSEngine>()) {}

ScriptEngineHolder::~ScriptEngineHolder() = default;

void ScriptEngineHolder::addGlobals(const ScriptContext& context) {
    context_.emplace(context);
    QJSValue global = engine_->globalObject();
    // Parented to the engine, so they go with it.
    QJSEngine* engine = engine_.get();
    http_ = new JSHttp(engine);
    global.setProperty(QStringLiteral("http"), engine->newQObject(http_));
    global.setProperty(QStringLiteral("auto"), engine->newQObject(new JSMorvane(context, engine)));
    global.setProperty(QStringLiteral("image"), engine->newQObject(new JSImage(context, engine)));
    global.setProperty(QStringLiteral("file"), engine->newQObject(new JSFile(engine)));
    global.setProperty(
        QStringLiteral("sleep"),
        engine->newQObject(new AutoPlugin(engine)).property(QStringLiteral("sleep")));
}

void ScriptEngineHolder::publishVariable(const QString& name, const QString& value) {
    static const QRegularExpression leadingDigits(QStringLiteral("^[0-9]+(.*)"));
    if (name.isEmpty() || leadingDigits.match(name).hasMatch()) {
        return;
    }
    engine_->globalObject().setProperty(name, value);
}

void ScriptEngineHolder::prepareRuntime(const ScriptContext& context) {
    addGlobals(context);
    if (context.definitions) {
        context.definitions->forEach([this](engine::MVVariable& variable) {
            publishVariable(variable.name(), variable.value());
        });
    }
}

void ScriptEngineHolder::prepareEditor(const model::TaskDocument& task) {
    addGlobals(ScriptContext{task});
    for (const auto& definition : task.definitions) {
        publishVariable(definition->name, definition->value);
    }
}

ScriptResult ScriptEngineHolder::evaluate(const QString& code) {
    QStringList stack;
    {
        std::optional<EvaluationWatch> watch;
        if (context_ && context_->control) {
            engine::IRunControl* control = context_->control;
            watch.emplace(*engine_, [control] { return control->stopRequested(); });
        }
        if (http_) {
            http_->setStop(watch ? watch->stopToken() : std::stop_token());
        }
        last_ = engine_->evaluate(code, QStringLiteral("script"), 1, &stack);
    }
    ScriptResult result;
    result.interrupted = engine_->isInterrupted();
    // A thrown value of any kind, an Error object or not, leaves a stack behind.
    const bool thrown = last_.isError() || !stack.isEmpty();
    result.text = last_.isUndefined() ? QString() : last_.toString();
    if (result.interrupted) {
        result.exception = QStringLiteral("interrupted: the run stopped");
    } else if (thrown) {
        result.exception = result.text;
    }
    return result;
}

}  // namespace autoscene::script

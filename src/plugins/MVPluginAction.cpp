#include "plugins/MVPluginAction.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <opencv2/core.hpp>

#include "engine/MVVariable.h"
#include "engine/RuntimeDefinitions.h"
#include "model/PluginDescription.h"
#include "plugins/ActionPluginRegistry.h"
#include "plugins/PluginChain.h"

namespace autoscene::plugins {

Q_LOGGING_CATEGORY(lcPluginAction, "autoscene.plugins.run")

namespace {

const QString kKeyType = QStringLiteral("type");

struct Change {
    QString variable;
    QString original;
    QString modified;
};

QString chainProblem(const ResultChain& chain) {
    QStringList problems;
    if (chain.skipped > 0) {
        problems
            << QStringLiteral("%1 result nodes without a name or value ignored").arg(chain.skipped);
    }
    if (chain.truncated) {
        problems << QStringLiteral("result chain cut after %1 nodes (too long or circular)")
                        .arg(chain.nodes.size() + size_t(chain.skipped));
    }
    return problems.join(QStringLiteral("; "));
}

}  // namespace

MVPluginAction::MVPluginAction(PluginCall call, QString libraryPath, QByteArray function,
                               engine::RunContext& context)
    : IAction(kType, 0.0f),
      call_(std::move(call)),
      libraryPath_(std::move(libraryPath)),
      function_(std::move(function)),
      context_(context) {
    if (!libraryPath_.isEmpty()) {
        ActionPluginRegistry& registry = ActionPluginRegistry::shared();
        generation_ = registry.generation();
        resolved_ = registry.resolve(libraryPath_, function_);
    }
}

mv_action_function MVPluginAction::currentFunction() {
    if (libraryPath_.isEmpty()) {
        return nullptr;
    }
    ActionPluginRegistry& registry = ActionPluginRegistry::shared();
    const std::uint64_t now = registry.generation();
    if (generation_ != now) {
        resolved_ = registry.resolve(libraryPath_, function_);
        generation_ = now;
    }
    return resolved_;
}

float MVPluginAction::run(engine::TaskInfo& task) {
    QJsonObject result{{kKeyType, type()}, {QStringLiteral("action_name"), call_.actionName}};
    const mv_action_function function = currentFunction();
    if (!function) {
        const QString error = libraryPath_.isEmpty()
                                  ? model::missingPluginMessage()
                                  : QStringLiteral("插件方法未找到:") + call_.actionName;
        qCWarning(lcPluginAction).noquote() << error;
        result[QStringLiteral("error")] = error;
        setResult(result);
        return waitSeconds();
    }

    cv::Mat frame = task.frame.isContinuous() ? task.frame : task.frame.clone();
    const mv_image image{frame.data, frame.cols, frame.rows, frame.empty() ? 0 : frame.channels()};
    const ParamChain params(parameterNodes(call_, [this](int id) {
        engine::MVVariable* variable = context_.definitions.find(id);
        return variable ? variable->value() : QString();
    }));
    const ResultChain chain = takeResultChain(function(&image, params.first()));

    std::vector<Change> changes;
    for (const ResultNode& node : chain.nodes) {
        for (const PluginOutput& output : call_.outputs) {
            if (output.result != node.name || output.variableId == 0) {
                continue;
            }
            if (engine::MVVariable* variable = context_.definitions.find(output.variableId)) {
                changes.push_back({variable->name(), variable->value(), node.value});
                variable->setValue(node.value);
            }
        }
    }
    const QString problem = chainProblem(chain);
    if (!problem.isEmpty()) {
        qCWarning(lcPluginAction).noquote() << call_.actionName << problem;
    }
    QJsonArray changeList;
    for (const Change& change : changes) {
        changeList.append(QJsonObject{{QStringLiteral("variable_name"), change.variable},
                                      {QStringLiteral("original"), change.original},
                                      {QStringLiteral("modify"), change.modified}});
    }
    const Change first = changes.empty() ? Change{} : changes.front();
    result[QStringLiteral("error")] = problem;
    result[QStringLiteral("variable_name")] = first.variable;
    result[QStringLiteral("original")] = first.original;
    result[QStringLiteral("modify")] = first.modified;
    result[QStringLiteral("modify_list")] = changeList;
    setResult(result);
    return waitSeconds();
}

}  // namespace autoscene::plugins

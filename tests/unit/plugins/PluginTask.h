#pragma once
// A task holding plug-in actions, opened from text, with the context to build and run
// them on the test's own thread or through a runner.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "InProcessTarget.h"
#include "NoRunControl.h"
#include "engine/RunClock.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/TaskDocument.h"
#include "plugins/PluginItems.h"

namespace autoscene::test {

// A plug-in action record: inputs and outputs as JSON array texts.
inline QString pluginAction(const QString& name, const QString& configFile,
                            const QString& inputs = "[]", const QString& outputs = "[]",
                            const QString& choices = "[]") {
    return QStringLiteral(R"({"type": 20, "action_name": "%1", "config_file": "%2",
        "action_inputs": %3, "action_outputs": %4, "action_optioninputs": %5})")
        .arg(name, configFile, inputs, outputs, choices);
}

class PluginTask : public ::testing::Test {
protected:
    PluginTask() { plugins::registerPluginItems(factory); }

    QString writeFile(const QString& name, const QByteArray& content) {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }

    // Variables 1 to 3 hold "héllo 世", "keep" and "keep" (2 shared by all threads, so that the
    // test sees a runner's change); the one scene runs `actions` then
    // stops the run.
    void open(const QStringList& actions) {
        const QString json = QStringLiteral(R"({"var_list": [
            {"type": 1, "id": 1, "name": "v1", "value": "héllo 世"},
            {"type": 1, "id": 2, "name": "v2", "value": "keep", "is_global": true},
            {"type": 1, "id": 3, "name": "v3", "value": "keep"}],
            "scene_list": [{"name": "s", "event_list": [{"name": "e", "item_group": {"type": 5,
            "item_list": []}, "action_list": [%1, {"type": 10}]}]}]})")
                                 .arg(actions.join(','));
        context.reset();
        definitions.reset();
        task = std::make_unique<model::TaskDocument>();
        const model::OpenResult result = task->openText(json.toUtf8());
        ASSERT_TRUE(result.ok) << result.error.toStdString();
        definitions = std::make_unique<engine::RuntimeDefinitions>(*task, clock);
        context = std::make_unique<engine::RunContext>(
            engine::RunContext{*task, *definitions, clock, target, control});
    }

    const model::IEditorAction& record(size_t index = 0) {
        return *task->scenes.front().events.front().actions.at(index);
    }

    QString variable(int id) { return definitions->find(id)->value(); }

    QTemporaryDir folder;
    engine::RuntimeFactory factory;
    engine::RunClock clock;
    InProcessTarget target;
    NoRunControl control;
    std::unique_ptr<model::TaskDocument> task;
    std::unique_ptr<engine::RuntimeDefinitions> definitions;
    std::unique_ptr<engine::RunContext> context;
};

}  // namespace autoscene::test

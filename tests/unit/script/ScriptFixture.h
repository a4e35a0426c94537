#pragma once
// A task, its runtime definitions and one worker, for evaluating scripts outside a runner.

#include <gtest/gtest.h>

#include <QString>

#include "InProcessTarget.h"
#include "NoRunControl.h"
#include "TestFiles.h"
#include "engine/RunClock.h"
#include "engine/RunContext.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/TaskInfo.h"
#include "model/TaskDocument.h"
#include "script/ScriptRun.h"

// Failures print texts as text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace autoscene::test {

class ScriptFixture : public ::testing::Test {
protected:
    void SetUp() override {
        // Variables "abc1" = "7", "1abc" = "hidden", "" = "nameless", "n" = "5"; colours
        // "red" (0xFF0000), "blue" (0x0000FF) and "bad" (beyond 0xFFFFFF).
        ASSERT_TRUE(
            task.openText(readFile(AUTOSCENE_FIXTURES "/tasks/script-globals/script.json")).ok);
        definitions = std::make_unique<engine::RuntimeDefinitions>(task, clock);
        context = std::make_unique<engine::RunContext>(
            engine::RunContext{task, *definitions, clock, target, control});
        worker.kind = engine::TargetKind::Window;
        worker.window = 42;
        worker.startWindow = 42;
    }

    script::ScriptResult run(const QString& code) {
        return script::runScript(*context, worker, code);
    }
    QString text(const QString& code) { return run(code).text; }

    model::TaskDocument task;
    engine::RunClock clock;
    InProcessTarget target;
    NoRunControl control;
    std::unique_ptr<engine::RuntimeDefinitions> definitions;
    std::unique_ptr<engine::RunContext> context;
    engine::TaskInfo worker;
};

}  // namespace autoscene::test

#pragma once
// A task, its runtime definitions and one worker, for evaluating scripts outside a runner.

#include <gtest/gtest.h>

#include <QString>

#include "TaskContext.h"
#include "TestFiles.h"
#include "engine/RunClock.h"
#include "engine/TaskInfo.h"
#include "script/ScriptRun.h"

// Failures print texts as text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace autoscene::test {

class ScriptFixture : public ::testing::Test, protected TaskContext<engine::RunClock> {
protected:
    void SetUp() override {
        // Variables "abc1" = "7", "1abc" = "hidden", "" = "nameless", "n" = "5"; colours
        // "red" (0xFF0000), "blue" (0x0000FF) and "bad" (beyond 0xFFFFFF).
        open(readFile(AUTOSCENE_FIXTURES "/tasks/script-globals/script.json"));
        worker.kind = engine::TargetKind::Window;
        worker.window = 42;
        worker.startWindow = 42;
    }

    script::ScriptResult run(const QString& code) {
        return script::runScript(*context, worker, code);
    }
    QString text(const QString& code) { return run(code).text; }

    engine::TaskInfo worker;
};

}  // namespace autoscene::test

#pragma once
// A task opened from text, its runtime definitions and a run context on the in-process
// target, for building and running conditions and actions outside a runner.

#include <gtest/gtest.h>

#include <memory>

#include "InProcessTarget.h"
#include "ManualClock.h"
#include "NoRunControl.h"
#include "engine/RunContext.h"
#include "engine/RuntimeDefinitions.h"
#include "model/TaskDocument.h"

namespace autoscene::test {

template <class Clock = ManualClock>
struct TaskContext {
    // Replaces the task; a text that does not open fails the test.
    void open(const QByteArray& json) {
        context.reset();
        definitions.reset();
        const model::OpenResult opened = task.openText(json);
        EXPECT_TRUE(opened.ok) << opened.error.toStdString();
        definitions = std::make_unique<engine::RuntimeDefinitions>(task, clock);
        context = std::make_unique<engine::RunContext>(
            engine::RunContext{task, *definitions, clock, target, control});
    }

    model::TaskDocument task;
    Clock clock;
    InProcessTarget target;
    NoRunControl control;
    std::unique_ptr<engine::RuntimeDefinitions> definitions;
    std::unique_ptr<engine::RunContext> context;
};

}  // namespace autoscene::test

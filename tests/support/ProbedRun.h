#pragma once
// A task opened from text and its runner on the in-process target, every tap standing in as a
// probe: a run of it calls `onProbe` with the tap's variable_id, under one lock for all
// threads, and waits the tap's postpone. It acts on nothing, yet ends a traversal as a tap does.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>

#include "InProcessTarget.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "model/EditorActions.h"
#include "model/TaskDocument.h"

namespace autoscene::test {

class ProbedRun {
public:
    ProbedRun() {
        factory.addAction(model::EditorTapAction::kType,
                          [this](const model::IEditorAction& record, engine::RunContext&) {
                              const auto& tap = static_cast<const model::EditorTapAction&>(record);
                              return std::make_unique<Probe>(*this, tap.variableId, tap.postpone);
                          });
    }

    // Replaces the task and its runner, which starts each cycle without a pause.
    void open(const QString& json, std::shared_ptr<engine::RunClock> clock = nullptr) {
        const model::OpenResult result = task.openText(json.toUtf8());
        EXPECT_TRUE(result.ok) << result.error.toStdString();
        runner = std::make_unique<engine::TaskRunner>(task, factory, target, std::move(clock));
        runner->setLoopIntervalMs(0);
    }

    std::mutex probeMutex;
    std::function<void(int probe, engine::TaskInfo&)> onProbe;
    engine::RuntimeFactory factory;
    InProcessTarget target;
    model::TaskDocument task;
    std::unique_ptr<engine::TaskRunner> runner;

private:
    class Probe : public engine::IAction {
    public:
        Probe(ProbedRun& owner, int id, float waitSeconds)
            : IAction(1, waitSeconds), owner_(owner), id_(id) {}
        float run(engine::TaskInfo& task) override {
            std::lock_guard lock(owner_.probeMutex);
            if (owner_.onProbe) {
                owner_.onProbe(id_, task);
            }
            return waitSeconds();
        }

    private:
        ProbedRun& owner_;
        const int id_;
    };
};

}  // namespace autoscene::test

#pragma once
// A run control for actions run outside a runner: the stop action, finished targets and
// the exclusive queue go nowhere; a test asks for a stop by setting `stop`.

#include <atomic>

#include "engine/RunContext.h"

namespace autoscene::test {

class NoRunControl : public engine::IRunControl {
public:
    void stopByTask() override {}
    void finishCurrentTarget(int) override {}
    bool stopRequested() const override { return stop.load(); }
    void enterExclusive() override {}
    void leaveExclusive() override {}

    std::atomic<bool> stop{false};
};

}  // namespace autoscene::test

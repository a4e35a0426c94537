#pragma once
// A run control for actions run outside a runner: the stop action and finished targets
// go nowhere.

#include "engine/RunContext.h"

namespace autoscene::test {

class NoRunControl : public engine::IRunControl {
public:
    void stopByTask() override {}
    void finishCurrentTarget(int) override {}
};

}  // namespace autoscene::test

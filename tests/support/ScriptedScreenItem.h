#pragma once
// A screen item that observes, on each detection, whatever the test's function returns.

#include <functional>
#include <utility>

#include "engine/ScreenItem.h"

namespace autoscene::test {

class ScriptedScreenItem : public engine::ScreenItem {
public:
    ScriptedScreenItem(Settings settings, const engine::RunClock& clock,
                       std::function<int()> observe)
        : ScreenItem(1, 1, settings, clock), observe_(std::move(observe)) {}

protected:
    int detect(engine::TaskInfo&) override { return observe_(); }
    QString typeWord() const override { return QStringLiteral("image"); }

private:
    std::function<int()> observe_;
};

}  // namespace autoscene::test

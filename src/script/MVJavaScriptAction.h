#pragma once
// Runs the task's code and stores its result, and in a variable when one is named.
// Result record: "type", "result", "variable", "log", "exception".

#include <QString>

#include "engine/IAction.h"
#include "engine/RunContext.h"

namespace autoscene::engine {
class MVVariable;
}
namespace autoscene::platform {
class IWindowControl;
}

namespace autoscene::script {

class MVJavaScriptAction : public engine::IAction {
public:
    static constexpr int kType = 12;

    // `variable` may be null: the result is only recorded.
    MVJavaScriptAction(QString code, engine::MVVariable* variable, engine::RunContext& context,
                       platform::IWindowControl* windows = nullptr);

    float run(engine::TaskInfo& task) override;

private:
    const QString code_;
    engine::MVVariable* variable_;
    engine::RunContext& context_;
    platform::IWindowControl* windows_;
};

}  // namespace autoscene::script

#pragma once
// Stores the text read in its rectangle into a variable. Results: "type",
// "variable_name", "value", "changed".

#include <memory>

#include "engine/IAction.h"
#include "engine/SearchArea.h"
#include "text/TextRegionReader.h"

namespace autoscene::engine {
class MVVariable;
}

namespace autoscene::actions {

using engine::IAction;
using engine::TaskInfo;

class MVScreenValueAction : public IAction {
public:
    static constexpr int kType = 4;

    // Reads the area's first rectangle, or the whole frame when it has none.
    MVScreenValueAction(std::shared_ptr<text::TextRegionReader> reader, engine::SearchArea area,
                        engine::MVVariable* variable);
    float run(TaskInfo& task) override;

private:
    const std::shared_ptr<text::TextRegionReader> reader_;
    const engine::SearchArea area_;
    engine::MVVariable* variable_;
};

}  // namespace autoscene::actions

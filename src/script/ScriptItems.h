#pragma once
// Registers the script condition and action with a runtime factory.

namespace autoscene::engine {
class RuntimeFactory;
}

namespace autoscene::script {

void registerScriptItems(engine::RuntimeFactory& factory);

}  // namespace autoscene::script

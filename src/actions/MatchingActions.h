#pragma once
// Registers the actions that find something on the screen before acting on it.

namespace autoscene::engine {
class RuntimeFactory;
}

namespace autoscene::actions {

void registerMatchingActions(engine::RuntimeFactory& factory);

}  // namespace autoscene::actions

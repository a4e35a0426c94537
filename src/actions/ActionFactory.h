#pragma once
// Registers the runtime builders of the action kinds this library implements.

namespace autoscene::engine {
class RuntimeFactory;
}

namespace autoscene::actions {

void registerStateActions(engine::RuntimeFactory& factory);
void registerInputActions(engine::RuntimeFactory& factory);

}  // namespace autoscene::actions

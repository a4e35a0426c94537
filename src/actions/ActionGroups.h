#pragma once
// The builders of each group of actions. Only RuntimeItems.cpp calls these; everyone else
// registers through registerAllRuntimeItems.

namespace autoscene::engine {
class RuntimeFactory;
}
namespace autoscene::conditions {
struct ScreenServices;
}

namespace autoscene::actions {

void registerInputActions(engine::RuntimeFactory& factory);
void registerMatchingActions(engine::RuntimeFactory& factory,
                             const conditions::ScreenServices& services);
void registerTextActions(engine::RuntimeFactory& factory,
                         const conditions::ScreenServices& services);

}  // namespace autoscene::actions

#pragma once
// Registers the plug-in action with a runtime factory, with the run hooks that initialise
// the action plug-ins when a run starts and release and unload them when it ends.

namespace autoscene::engine {
class RuntimeFactory;
}

namespace autoscene::plugins {

void registerPluginItems(engine::RuntimeFactory& factory);

}  // namespace autoscene::plugins

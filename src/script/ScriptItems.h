#pragma once
// Registers the script condition and action with a runtime factory.

namespace autoscene::engine {
class RuntimeFactory;
}
namespace autoscene::platform {
class IWindowControl;
}

namespace autoscene::script {

// `windows` serves the window methods of `auto`; without it they find nothing.
void registerScriptItems(engine::RuntimeFactory& factory,
                         platform::IWindowControl* windows = nullptr);

}  // namespace autoscene::script

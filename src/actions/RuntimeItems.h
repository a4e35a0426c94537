#pragma once
// The one place where the kinds beyond the engine's own are registered: the screen
// conditions, the script condition and every action, the plug-in action among them. A kind
// registered twice throws std::logic_error.

#include <memory>

namespace autoscene::engine {
class RuntimeFactory;
}
namespace autoscene::text {
class OcrClient;
}
namespace autoscene::conditions {
struct ScreenServices;
}
namespace autoscene::platform {
class IWindowControl;
}

namespace autoscene::actions {

// `ocr` reads screen text for the text conditions and actions; without one they read
// nothing. `windows` serves the window methods of scripts; without it they find nothing.
void registerAllRuntimeItems(engine::RuntimeFactory& factory,
                             std::shared_ptr<const text::OcrClient> ocr,
                             platform::IWindowControl* windows = nullptr);
// With the screen services given, so that the caller may look at the label detections.
void registerAllRuntimeItems(engine::RuntimeFactory& factory,
                             const conditions::ScreenServices& services,
                             platform::IWindowControl* windows = nullptr);

}  // namespace autoscene::actions

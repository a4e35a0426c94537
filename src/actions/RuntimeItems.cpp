#include "actions/RuntimeItems.h"

#include "actions/ActionGroups.h"
#include "conditions/ScreenConditions.h"
#include "plugins/PluginItems.h"
#include "recognition/LabelDetector.h"
#include "script/ScriptItems.h"

namespace autoscene::actions {

void registerAllRuntimeItems(engine::RuntimeFactory& factory,
                             std::shared_ptr<const text::OcrClient> ocr,
                             platform::IWindowControl* windows) {
    registerAllRuntimeItems(
        factory,
        conditions::ScreenServices{std::move(ocr), std::make_shared<recognition::LabelDetector>()},
        windows);
}

void registerAllRuntimeItems(engine::RuntimeFactory& factory,
                             const conditions::ScreenServices& services,
                             platform::IWindowControl* windows) {
    conditions::registerScreenConditions(factory, services);
    registerInputActions(factory);
    registerMatchingActions(factory, services);
    registerTextActions(factory, services);
    script::registerScriptItems(factory, windows);
    plugins::registerPluginItems(factory);
}

}  // namespace autoscene::actions

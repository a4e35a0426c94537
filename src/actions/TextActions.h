#pragma once
// Registers the actions that read text on the screen through `client`.

#include <memory>

namespace autoscene::engine {
class OcrClient;
class RuntimeFactory;
}  // namespace autoscene::engine

namespace autoscene::actions {

void registerTextActions(engine::RuntimeFactory& factory,
                         std::shared_ptr<const engine::OcrClient> client);

}  // namespace autoscene::actions

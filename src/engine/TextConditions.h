#pragma once
// Registers the screen-text condition, which reads through `client`.

#include <memory>

namespace autoscene::engine {

class OcrClient;
class RuntimeFactory;

void registerTextConditions(RuntimeFactory& factory, std::shared_ptr<const OcrClient> client);

}  // namespace autoscene::engine

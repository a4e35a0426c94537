#include "EngineChoice.h"

namespace autoscene::ocr {

Engine parseEngine(std::string_view field) {
    if (field == "accurate") {
        return Engine::Accurate;
    }
    if (field == "fast") {
        return Engine::Fast;
    }
    return Engine::Invalid;
}

std::string_view engineName(Engine engine) {
    switch (engine) {
        case Engine::Accurate:
            return "accurate";
        case Engine::Fast:
            return "fast";
        case Engine::Invalid:
            break;
    }
    return "invalid";
}

}  // namespace autoscene::ocr

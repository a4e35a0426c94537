#pragma once
// The request's `engine` form field.

#include <string_view>

namespace autoscene::ocr {

enum class Engine { Invalid = 0, Accurate, Fast };

// "accurate" or "fast"; Invalid for anything else.
Engine parseEngine(std::string_view field);

// The name the answer's "engine" member carries.
std::string_view engineName(Engine engine);

}  // namespace autoscene::ocr

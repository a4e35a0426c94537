#pragma once
// The JSON bodies the service answers with.

#include <string>
#include <string_view>
#include <vector>

namespace autoscene::ocr {

// One recognised line of text and its bounding box in image pixels.
struct TextLine {
    std::string text;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// {"strRes": lines joined by "\n", "boxes": [{"text", "x", "y", "width", "height"}, ...],
//  "engine": engine} with the boxes in the order given. Bytes that are not UTF-8 become
// U+FFFD.
std::string buildAnswerJson(const std::vector<TextLine>& lines, std::string_view engine);

// {"error": message}
std::string buildErrorJson(std::string_view message);

}  // namespace autoscene::ocr

#pragma once

#include <string>
#include <string_view>

namespace autoscene::ocr {

// The chi_sim model reports a space between each pair of Chinese characters ("开 始");
// this drops blanks that stand between two CJK characters and keeps every other one.
// Bytes that are not valid UTF-8 are kept as they are.
std::string removeSpacesBetweenCjk(std::string_view utf8);

}  // namespace autoscene::ocr

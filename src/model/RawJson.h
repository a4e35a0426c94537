#pragma once
// A JSON value whose form the task file leaves open: kept as compact JSON text
// and written back as it was read.

#include <string>

namespace autoscene::model {

struct RawJson {
    std::string text;  // compact JSON text of one value

    bool operator==(const RawJson&) const = default;
};

}  // namespace autoscene::model

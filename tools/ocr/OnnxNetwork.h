#pragma once

#include <opencv2/dnn/dnn.hpp>

#include <functional>
#include <string_view>
#include <vector>

namespace autoscene::ocr {

// The network in `onnx`, checked by `check` (which runs it once and may throw
// cv::Exception or std::runtime_error). Throws std::runtime_error naming `role`
// ("detector", "recogniser") and OpenCV's reason when the bytes do not read or run.
cv::dnn::Net readCheckedNetwork(const std::vector<unsigned char>& onnx, std::string_view role,
                                const std::function<void(cv::dnn::Net&)>& check);

}  // namespace autoscene::ocr

#include "OnnxNetwork.h"

#include <stdexcept>
#include <string>

namespace autoscene::ocr {

cv::dnn::Net readCheckedNetwork(const std::vector<unsigned char>& onnx, std::string_view role,
                                const std::function<void(cv::dnn::Net&)>& check) {
    const std::string prefix = "the " + std::string(role) + " network ";
    cv::dnn::Net net;
    try {
        net = cv::dnn::readNetFromONNX(reinterpret_cast<const char*>(onnx.data()), onnx.size());
    } catch (const cv::Exception& error) {
        throw std::runtime_error(prefix + "does not read: " + error.err);
    }
    if (net.empty()) {
        throw std::runtime_error(prefix + "is empty");
    }
    try {
        check(net);
    } catch (const cv::Exception& error) {
        throw std::runtime_error(prefix + "does not run: " + error.err);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(prefix + error.what());
    }
    return net;
}

}  // namespace autoscene::ocr

// An action plug-in that reads a QR code on the screen: decode_qr looks in the whole frame,
// or in the rectangle given by the parameter "region" ("x,y,width,height"), and returns
// "found" ("1" or "0") and "text" (the decoded text, UTF-8). OpenCV cuts and greys the
// region; ZBar decodes, since Debian's OpenCV detects QR codes but cannot decode them.
#include <zbar.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "autoscene_plugin.h"

namespace {

char* copyText(const std::string& text) {
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy) {
        std::memcpy(copy, text.c_str(), text.size() + 1);
    }
    return copy;
}

// Prepends a node; on allocation failure the chain stays as it was.
mv_node* prepend(mv_node* chain, const char* name, const std::string& value) {
    auto* node = static_cast<mv_node*>(std::malloc(sizeof(mv_node)));
    if (!node) {
        return chain;
    }
    node->name = copyText(name);
    node->value = copyText(value);
    node->next = chain;
    return node;
}

const char* parameter(const mv_node* params, const char* name) {
    for (const mv_node* node = params; node; node = node->next) {
        if (node->name && node->value && std::strcmp(node->name, name) == 0) {
            return node->value;
        }
    }
    return nullptr;
}

// The region clipped to the frame; the whole frame when none is given or it is malformed.
cv::Rect regionOf(const char* text, const cv::Size& frame) {
    const cv::Rect whole(cv::Point(0, 0), frame);
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (!text || std::sscanf(text, "%d,%d,%d,%d", &x, &y, &width, &height) != 4) {
        return whole;
    }
    return cv::Rect(x, y, width, height) & whole;
}

// The first QR code's text in a grey image, or nothing.
std::string decode(const cv::Mat& grey) {
    zbar::ImageScanner scanner;
    scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    scanner.set_config(zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_ENABLE, 1);
    zbar::Image image(unsigned(grey.cols), unsigned(grey.rows), "Y800", grey.data,
                      static_cast<unsigned long>(grey.total()));
    if (scanner.scan(image) <= 0) {
        return {};
    }
    return image.symbol_begin()->get_data();
}

}  // namespace

MV_API int MV_CALL mv_plugin_abi(void) {
    return MV_PLUGIN_ABI;
}

MV_API void MV_CALL plugin_init(void) {}

MV_API void MV_CALL plugin_uninit(void) {}

MV_API mv_node* MV_CALL decode_qr(const mv_image* image, const mv_node* params) {
    std::string text;
    if (image && image->data && image->width > 0 && image->height > 0 &&
        (image->channels == 3 || image->channels == 4)) {
        const cv::Mat frame(image->height, image->width, CV_8UC(image->channels),
                            const_cast<unsigned char*>(image->data));
        const cv::Rect region = regionOf(parameter(params, "region"), frame.size());
        if (!region.empty()) {
            cv::Mat grey;
            cv::cvtColor(frame(region), grey,
                         image->channels == 3 ? cv::COLOR_BGR2GRAY : cv::COLOR_BGRA2GRAY);
            text = decode(grey);
        }
    }
    mv_node* results = prepend(nullptr, "text", text);
    return prepend(results, "found", text.empty() ? "0" : "1");
}

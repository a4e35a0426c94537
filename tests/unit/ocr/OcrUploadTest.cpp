#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "OcrUpload.h"

using autoscene::ocr::decodeUpload;

namespace {

std::string encodePng(const cv::Mat& image) {
    std::vector<uchar> bytes;
    cv::imencode(".png", image, bytes);
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace

// cv::norm throws, failing the test, when the decoded image's size or type differs.
TEST(OcrUpload, DecodesPngToBgrOfTheSameSize) {
    cv::Mat colour(30, 50, CV_8UC3, cv::Scalar(0, 0, 255));
    colour(cv::Rect(0, 0, 10, 10)).setTo(cv::Scalar(255, 255, 255));
    EXPECT_EQ(cv::norm(decodeUpload(encodePng(colour)).bgr, colour, cv::NORM_INF), 0.0);
    const auto grey = decodeUpload(encodePng(cv::Mat(8, 9, CV_8UC1, cv::Scalar(77))));
    EXPECT_EQ(cv::norm(grey.bgr, cv::Mat(8, 9, CV_8UC3, cv::Scalar::all(77)), cv::NORM_INF), 0.0);
}

TEST(OcrUpload, RefusesWhatIsNotASmallEnoughWholePng) {
    const std::string png = encodePng(cv::Mat(40, 60, CV_8UC1, cv::Scalar(200)));
    std::string oversized = png;
    oversized.resize(32u * 1024u * 1024u + 1u);
    std::string zeroWidth = png;
    zeroWidth.replace(16, 4, std::string(4, '\0'));
    std::string wide = png;
    wide.replace(16, 4, std::string("\x00\x00\x40\x01", 4));  // 16385 pixels
    std::string tall = png;
    tall.replace(16, 8, std::string("\x00\x00\x27\x10\x00\x00\x27\x10", 8));  // 100 Mpixel
    std::string otherSize = png;
    otherSize.replace(19, 1, std::string("\x3d", 1));  // header says 61 wide, data is 60
    for (const std::string& bad :
         {std::string(), std::string("GIF89a"), png.substr(0, 23), png.substr(0, png.size() - 20),
          oversized, zeroWidth, wide, tall, otherSize}) {
        const auto upload = decodeUpload(bad);
        EXPECT_NE(upload.error, "") << bad.size();
        EXPECT_TRUE(upload.bgr.empty());
    }
    EXPECT_EQ(decodeUpload(oversized).error, "the image is larger than 32 MiB");
    EXPECT_EQ(decodeUpload("GIF89a").error, "the upload is not a PNG image");
}

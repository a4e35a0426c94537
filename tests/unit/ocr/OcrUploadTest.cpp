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

TEST(OcrUpload, DecodesPngToBgrOfTheSameSize) {
    cv::Mat colour(30, 50, CV_8UC3, cv::Scalar(0, 0, 255));
    colour(cv::Rect(0, 0, 10, 10)).setTo(cv::Scalar(255, 255, 255));
    const auto upload = decodeUpload(encodePng(colour));
    ASSERT_EQ(upload.error, "");
    EXPECT_EQ(upload.bgr.type(), CV_8UC3);
    EXPECT_EQ(upload.bgr.size(), cv::Size(50, 30));
    EXPECT_EQ(upload.bgr.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
    EXPECT_EQ(upload.bgr.at<cv::Vec3b>(20, 40), cv::Vec3b(0, 0, 255));

    cv::Mat grey(8, 9, CV_8UC1, cv::Scalar(77));
    const auto fromGrey = decodeUpload(encodePng(grey));
    ASSERT_EQ(fromGrey.bgr.type(), CV_8UC3);
    EXPECT_EQ(fromGrey.bgr.at<cv::Vec3b>(7, 8), cv::Vec3b(77, 77, 77));
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

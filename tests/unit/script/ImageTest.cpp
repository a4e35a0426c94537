// The `image` object on a worker's frame, with template images of a task folder.

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "ScriptFixture.h"

namespace {

class Image : public autoscene::test::ScriptFixture {
protected:
    void SetUp() override {
        autoscene::test::ScriptFixture::SetUp();
        ASSERT_TRUE(QDir(dir.path()).mkpath("image"));
        // A frame of random noise: a template cut from it is found only where it was cut.
        cv::Mat frame(120, 200, CV_8UC3);
        cv::randu(frame, 0, 255);
        worker.frame = frame;
        const std::string folder = dir.filePath("image/").toStdString();
        cv::imwrite(folder + "patch.png", frame(cv::Rect(30, 40, 24, 16)));
        cv::imwrite(folder + "corner.png", frame(cv::Rect(150, 80, 10, 10)));
        // A colour image stored for a thresholded (one-channel) find cannot be matched.
        cv::imwrite(folder + "colour.png", frame(cv::Rect(0, 0, 8, 8)));
        open(autoscene::test::readFile(AUTOSCENE_FIXTURES "/script/images.json"));
        task.folderPath = dir.path() + "/";
    }

    QTemporaryDir dir;
};

TEST_F(Image, FindReportsEveryNamedImageFound) {
    EXPECT_EQ(text("JSON.stringify(image.find('patch|corner'))"),
              R"({"code":0,"msg":"","rects":["30,40,24,16","150,80,10,10"]})");
    EXPECT_EQ(text("JSON.stringify(image.find('patch', '100,0,100,120'))"),
              R"({"code":0,"msg":"","rects":[]})");
    // An invalid region is the whole frame; a region reaching out is clipped.
    EXPECT_EQ(text("image.find('patch', 'nonsense').rects.join()"), "30,40,24,16");
    EXPECT_EQ(text("image.find('corner', '140,70,500,500').rects.join()"), "150,80,10,10");
    EXPECT_EQ(text("image.exist('patch') + ',' + image.exist('patch', '100,0,100,120')"),
              "true,false");
}

TEST_F(Image, FindThatCannotRunSaysWhy) {
    EXPECT_EQ(text("JSON.stringify(image.find('colour'))"),
              R"({"code":-1,"msg":"图片格式错误，请重新添加","rects":[]})");
    for (const char* name : {"gone", "no such name"}) {
        EXPECT_EQ(text(QStringLiteral("var r = image.find('%1'); r.code + r.msg").arg(name)),
                  "-2图片不存在，请重新添加");
    }
    EXPECT_EQ(text("var r = image.find('patch', '0,0,10,10'); r.code + r.msg"),
              "-3查找范围小于图片大小");
    EXPECT_EQ(text("image.exist('gone')"), "false");
}

TEST_F(Image, EncodesAndSavesTheFrameInRgb) {
    const QByteArray png =
        QByteArray::fromBase64(text("image.toBase64('png', 100, '150,80,10,10')").toLatin1());
    const QImage decoded = QImage::fromData(png, "PNG");
    ASSERT_EQ(decoded.size(), QSize(10, 10));
    const cv::Vec3b bgr = worker.frame.at<cv::Vec3b>(85, 155);
    EXPECT_EQ(decoded.pixel(5, 5), qRgb(bgr[2], bgr[1], bgr[0]));

    const QString saved = dir.filePath("frame.jpg");
    EXPECT_EQ(text(QStringLiteral("image.save('%1', 'jpg', 90)").arg(saved)), "true");
    EXPECT_EQ(QImage(saved).size(), QSize(200, 120));
    EXPECT_EQ(text("image.toBase64('no such format', 90)"), "");

    worker.frame.release();
    EXPECT_EQ(text("image.toBase64('png', 90) + image.exist('patch')"), "false");
}

}  // namespace

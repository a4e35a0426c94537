// Template files as users save them: with alpha, in grey, in 16 bits, or broken.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "LogCapture.h"
#include "MatchingTestKit.h"
#include "recognition/TemplateImage.h"
#include "recognition/TemplateMatcher.h"

using namespace autoscene::recognition;
using autoscene::ocr::testkit::LogCapture;
using autoscene::test::noiseFrame;

namespace {

class TemplateImageTest : public ::testing::Test {
protected:
    // Finds the file's template in `frame` as a colour match.
    MatchRecord match(const cv::Mat& frame, const QString& path) {
        TemplateMatcher::Settings settings;
        settings.filePath = path;
        settings.imageType = MatchImageType::Color;
        TemplateMatcher matcher(settings);
        matcher.matchDefault(frame, 1);
        return matcher.record();
    }

    QString write(const cv::Mat& image, const QString& name) {
        const QString path = dir.filePath(name);
        EXPECT_TRUE(cv::imwrite(path.toStdString(), image)) << name.toStdString();
        return path;
    }

    QTemporaryDir dir;
};

TEST_F(TemplateImageTest, AlphaGreyAndSixteenBitTemplatesMatchLikeTheirThreeChannelForm) {
    // Grey noise in three equal channels, so that a grey template has a colour twin.
    cv::Mat grey = noiseFrame(120, 80, 7);
    cv::cvtColor(grey, grey, cv::COLOR_BGR2GRAY);
    cv::Mat frame;
    cv::cvtColor(grey, frame, cv::COLOR_GRAY2BGR);
    const cv::Rect cut(40, 20, 24, 18);
    const cv::Mat piece = frame(cut).clone();

    cv::Mat withAlpha;
    cv::cvtColor(piece, withAlpha, cv::COLOR_BGR2BGRA);
    cv::Mat deep;
    piece.convertTo(deep, CV_16U, 257.0);
    cv::Mat greyDeep;
    grey(cut).convertTo(greyDeep, CV_16U, 257.0);
    const std::pair<const char*, cv::Mat> forms[] = {{"bgr.png", piece},
                                                     {"bgra.png", withAlpha},
                                                     {"grey.png", grey(cut).clone()},
                                                     {"bgr16.png", deep},
                                                     {"grey16.png", greyDeep}};
    for (const auto& [name, image] : forms) {
        const MatchRecord record = match(frame, write(image, name));
        EXPECT_TRUE(record.found) << name;
        EXPECT_EQ(record.status, kMatchOk) << name;
        ASSERT_EQ(record.resultCount, 1u) << name;
        EXPECT_EQ(record.results[0].match, QRect(40, 20, 24, 18)) << name;
    }

    // The one-channel types take the grey of an image with alpha.
    const cv::Mat mask = templateForm(withAlpha, MatchImageType::Threshold);
    EXPECT_EQ(mask.channels(), 1);
    EXPECT_EQ(mask.depth(), CV_8U);
}

TEST_F(TemplateImageTest, ABrokenFileIsReportedOnceUntilItChanges) {
    const cv::Mat frame = noiseFrame(60, 60, 3);
    const cv::Mat piece = frame(cv::Rect(5, 5, 12, 12)).clone();
    std::vector<uchar> png;
    cv::imencode(".png", piece, png);
    const QString path = dir.filePath(QStringLiteral("cut.png"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(png.data()), qint64(png.size() / 2));
    file.close();

    const LogCapture log;
    for (int cycle = 0; cycle < 5; ++cycle) {
        EXPECT_TRUE(readTemplateImage(path, MatchImageType::Color).empty());
    }
    EXPECT_EQ(log.count(QStringLiteral("does not decode")), 1) << log.all().toStdString();

    write(piece, QStringLiteral("cut.png"));
    EXPECT_EQ(readTemplateImage(path, MatchImageType::Color).size(), piece.size());
    EXPECT_EQ(log.count(QStringLiteral("does not decode")), 1);
}

}  // namespace

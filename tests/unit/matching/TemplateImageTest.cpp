// Template files as users save them: with alpha, in grey, in 16 bits (broken ones are
// TemplateMatcherTest's).

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "MatchingTestKit.h"
#include "recognition/TemplateImage.h"
#include "recognition/TemplateMatcher.h"

using namespace autoscene::recognition;
using autoscene::test::noiseFrame;

namespace {

TEST(TemplateImageTest, AlphaGreyAndSixteenBitTemplatesMatchLikeTheirThreeChannelForm) {
    // Grey noise in three equal channels, so that a grey template has a colour twin.
    cv::Mat grey = noiseFrame(120, 80, 7);
    cv::cvtColor(grey, grey, cv::COLOR_BGR2GRAY);
    cv::Mat frame;
    cv::cvtColor(grey, frame, cv::COLOR_GRAY2BGR);
    const cv::Rect cut(40, 20, 24, 18);
    const cv::Mat piece = frame(cut).clone();

    cv::Mat withAlpha;
    cv::Mat deep;
    cv::Mat greyDeep;
    cv::cvtColor(piece, withAlpha, cv::COLOR_BGR2BGRA);
    piece.convertTo(deep, CV_16U, 257.0);
    grey(cut).convertTo(greyDeep, CV_16U, 257.0);
    const std::pair<const char*, cv::Mat> forms[] = {{"bgr.png", piece},
                                                     {"bgra.png", withAlpha},
                                                     {"grey.png", grey(cut).clone()},
                                                     {"bgr16.png", deep},
                                                     {"grey16.png", greyDeep}};
    const QTemporaryDir dir;
    for (const auto& [name, image] : forms) {
        TemplateMatcher::Settings settings;
        settings.filePath = dir.filePath(QString::fromUtf8(name));
        ASSERT_TRUE(cv::imwrite(settings.filePath.toStdString(), image)) << name;
        TemplateMatcher matcher(settings);
        matcher.matchDefault(frame, 1);
        const MatchRecord& record = matcher.record();
        ASSERT_EQ(std::tuple(record.found, record.status, record.resultCount),
                  std::tuple(true, int(kMatchOk), size_t(1)))
            << name;
        EXPECT_EQ(record.results[0].match, QRect(40, 20, 24, 18)) << name;
    }

    // A file rewritten at once with other pixels is decoded anew, not taken from before.
    for (const cv::Point at : {cv::Point(10, 10), cv::Point(70, 50)}) {
        TemplateMatcher::Settings settings;
        settings.filePath = dir.filePath("bgr.png");
        ASSERT_TRUE(cv::imwrite(settings.filePath.toStdString(), frame(cv::Rect(at, cut.size()))));
        TemplateMatcher matcher(settings);
        matcher.matchDefault(frame, 1);
        EXPECT_EQ(matcher.record().results[0].match.topLeft(), QPoint(at.x, at.y));
    }

    // The one-channel types take the grey of an image with alpha.
    EXPECT_EQ(templateForm(withAlpha, MatchImageType::Threshold).type(), CV_8UC1);
}

}  // namespace

// The template matcher on crafted frames: scoring and clipping, the image types, template
// files as users save them, unreadable templates and the per-cycle cache. Each thread's own record
// is checked with two workers at once in DetectionPoolTest.

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "LogCapture.h"
#include "MatchingTestKit.h"
#include "TestFiles.h"
#include "recognition/TemplateImage.h"
#include "recognition/TemplateMatcher.h"

using namespace autoscene::recognition;
using autoscene::ocr::testkit::LogCapture;
using autoscene::test::noiseFrame;

namespace {

// Stripes across x as the template; the frame adds stripes across y of height
// `noise`. The two patterns are orthogonal, so the score is 50 / sqrt(50² + noise²).
cv::Mat stripes(int size, int noise) {
    cv::Mat image(size, size, CV_8UC3);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const int value = 100 + (x % 2 == 0 ? 50 : -50) + (y % 2 == 0 ? noise : -noise);
            image.at<cv::Vec3b>(y, x) = cv::Vec3b::all(std::uint8_t(value));
        }
    }
    return image;
}

class TemplateMatcherTest : public ::testing::Test {
protected:
    QString write(const cv::Mat& image, const QString& name = QStringLiteral("t.png")) {
        QString path = dir.filePath(name);
        EXPECT_TRUE(cv::imwrite(path.toStdString(), image));
        return path;
    }

    QTemporaryDir dir;
};

TEST_F(TemplateMatcherTest, ScoreIsRoundedToTwoDecimalsBeforeTheThreshold) {
    // 50 / sqrt(50² + 38²) = 0.796 and 50 / sqrt(50² + 39²) = 0.788.
    for (const auto& [noise, score, found] : {std::tuple{38, 0.80f, true}, {39, 0.79f, false}}) {
        TemplateMatcher m({.filePath = write(stripes(8, 0))});
        m.matchDefault(stripes(8, noise), 1);
        EXPECT_FLOAT_EQ(m.bestResult().score, score) << noise;
        EXPECT_EQ(m.record().found, found) << noise;
    }
}

TEST_F(TemplateMatcherTest, ClipsTheSearchAreaToTheFrameAndNeedsItAsLargeAsTheTemplate) {
    const cv::Mat frame = noiseFrame(120, 80, 3);
    TemplateMatcher m({.filePath = write(frame(cv::Rect(2, 3, 20, 20)).clone())});

    m.matchIn(frame, QRect(-30, -30, 80, 80), 1);  // partly outside
    EXPECT_EQ(std::pair(m.record().found, m.bestResult().match.topLeft()),
              std::pair(true, QPoint(2, 3)));
    m.matchIn(frame, QRect(2, 3, 20, 20), 2);  // as large as the template
    EXPECT_TRUE(m.record().found);

    // Outside the frame, or a pixel narrower or shorter than the template.
    for (const QRect small : {QRect(500, 10, 40, 40), QRect(10, -200, 40, 40), QRect(2, 3, 19, 20),
                              QRect(2, 3, 20, 19)}) {
        m.matchIn(frame, small, 3);
        EXPECT_EQ(std::pair(m.record().found, m.record().status),
                  std::pair(false, int(kMatchAreaTooSmall)))
            << small.width() << 'x' << small.height();
    }
}

TEST_F(TemplateMatcherTest, ExpandSizeWidensTheDefaultRectangleOnEverySide) {
    for (const auto& [expand, rect] :
         {std::pair{10, QRect(90, 90, 70, 70)}, {-3, QRect(100, 100, 50, 50)}}) {
        TemplateMatcher m({.searchRect = QRect(100, 100, 50, 50), .expandSizePx = expand});
        EXPECT_EQ(m.defaultRect(cv::Mat()), rect) << expand;
    }
}

// A colour template stored for a one-channel type is refused; grey ones for the colour
// types are taken as colour (below).
TEST_F(TemplateMatcherTest, EachImageTypeMatchesItsPreparedTemplateAndRefusesTheOther) {
    cv::Mat frame =
        cv::Mat(90, 160, CV_8UC3, cv::Scalar(30, 40, 50)) * 0.5 + noiseFrame(160, 90, 12) * 0.5;
    // A red shape for the colour filter, drawn at a known place.
    cv::circle(frame, {101, 45}, 9, cv::Scalar(0, 0, 255), cv::FILLED);
    cv::rectangle(frame, cv::Rect(96, 30, 4, 6), cv::Scalar(0, 0, 255), cv::FILLED);
    const cv::Rect cut(88, 28, 26, 28);
    const cv::Mat piece = frame(cut).clone();

    cv::Mat grey;
    cv::Mat hls;
    cv::Mat mask;
    cv::cvtColor(piece, grey, cv::COLOR_BGR2GRAY);
    cv::threshold(grey, grey, 90, 255, cv::THRESH_BINARY);
    cv::cvtColor(piece, hls, cv::COLOR_BGR2HLS);
    cv::inRange(piece, cv::Scalar(0, 0, 230), cv::Scalar(25, 25, 255), mask);

    // {type, the template stored for it, one it refuses}
    for (const auto& [type, stored, refusedImage] :
         {std::tuple{MatchImageType::Color, piece, cv::Mat()},
          {MatchImageType::Threshold, grey, piece},
          {MatchImageType::Hls, hls, cv::Mat()},
          {MatchImageType::FilterColor, mask, piece}}) {
        TemplateMatcher::Settings settings;
        settings.filePath = write(stored, QStringLiteral("type%1.png").arg(int(type)));
        settings.imageType = type;
        settings.thresholdValue = 90;
        // The region is filtered as RGB with the colour's bounds in blue, green, red
        // order: the colour's blue meets the frame's red.
        settings.filterColor = 0x0000ff;
        settings.filterSimilarity = 0.9f;
        TemplateMatcher m(settings);
        m.matchDefault(frame, 1);
        EXPECT_EQ(
            std::tuple(m.record().found, m.bestResult().match, m.bestResult().region.channels()),
            std::tuple(true, QRect(88, 28, 26, 28), stored.channels()))
            << int(type);
        if (refusedImage.empty()) {
            continue;
        }

        settings.filePath = write(refusedImage, QStringLiteral("refused%1.png").arg(int(type)));
        TemplateMatcher refused(settings);
        refused.matchDefault(frame, 1);
        EXPECT_EQ(std::pair(refused.record().found, refused.record().status),
                  std::pair(false, int(kMatchBadFormat)))
            << int(type);
    }
}

TEST_F(TemplateMatcherTest, AlphaGreyAndSixteenBitTemplatesMatchLikeTheirThreeChannelForm) {
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
    for (const auto& [name, image] : {std::pair{"bgr.png", piece},
                                      {"bgra.png", withAlpha},
                                      {"grey.png", grey(cut).clone()},
                                      {"bgr16.png", deep},
                                      {"grey16.png", greyDeep}}) {
        TemplateMatcher m({.filePath = write(image, name)});
        m.matchDefault(frame, 1);
        ASSERT_EQ(std::tuple(m.record().found, m.record().status, m.record().resultCount),
                  std::tuple(true, int(kMatchOk), size_t(1)))
            << name;
        EXPECT_EQ(m.bestResult().match, QRect(40, 20, 24, 18)) << name;
    }

    // A file rewritten at once with other pixels is decoded anew, not taken from before.
    for (const cv::Point at : {cv::Point(10, 10), cv::Point(70, 50)}) {
        TemplateMatcher m({.filePath = write(frame(cv::Rect(at, cut.size())), "bgr.png")});
        m.matchDefault(frame, 1);
        EXPECT_EQ(m.bestResult().match.topLeft(), QPoint(at.x, at.y));
    }

    // The one-channel types take the grey of an image with alpha.
    EXPECT_EQ(templateForm(withAlpha, MatchImageType::Threshold).type(), CV_8UC1);
}

TEST_F(TemplateMatcherTest, UnreadableTemplatesReportMissingAndAreRetried) {
    const cv::Mat frame = noiseFrame(60, 60, 2);
    const cv::Mat piece = frame(cv::Rect(5, 5, 12, 12)).clone();
    std::vector<uchar> png;
    cv::imencode(".png", piece, png);

    const QString path = dir.filePath(QStringLiteral("late.png"));
    TemplateMatcher m({.filePath = path});
    const LogCapture log;
    int cycle = 0;
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("not a png"),
          QByteArray(reinterpret_cast<const char*>(png.data()), qsizetype(png.size() / 2))}) {
        autoscene::test::writeFile(path, bytes);
        for (int again = 0; again < 3; ++again) {
            m.matchDefault(frame, ++cycle);
            EXPECT_EQ(m.record().status, kMatchMissingImage) << bytes.size();
        }
    }
    EXPECT_EQ(log.count(QStringLiteral("does not decode")), 3)
        << "each broken file once until it changes: " << log.all().toStdString();

    write(piece, QStringLiteral("late.png"));
    m.matchDefault(frame, ++cycle);
    EXPECT_EQ(std::pair(m.record().found, m.record().status), std::pair(true, int(kMatchOk)));
}

TEST_F(TemplateMatcherTest, ARectangleIsMatchedOncePerCycleAndAListStopsAtTheFirstFind) {
    cv::Mat frame = noiseFrame(100, 100, 4);
    TemplateMatcher m({.filePath = write(frame(cv::Rect(40, 40, 16, 16)).clone())});
    m.matchDefault(frame, 1);
    noiseFrame(100, 100, 99).copyTo(frame);
    m.matchDefault(frame, 1);  // same cycle: the earlier result stands
    EXPECT_EQ(std::pair(m.record().found, m.record().resultCount), std::pair(true, size_t(1)));
    m.matchDefault(frame, 2);
    EXPECT_EQ(std::pair(m.record().found, m.record().resultCount), std::pair(false, size_t(1)));

    // A rectangle list stops at the first find unless all are wanted.
    TemplateMatcher list({.filePath = write(frame(cv::Rect(40, 40, 16, 16)).clone(), "l.png")});
    const std::vector<QRect> rects{QRect(0, 0, 30, 30), QRect(30, 30, 40, 40),
                                   QRect(35, 35, 30, 30)};
    list.matchRects(frame, rects, false, 3);
    EXPECT_EQ(std::pair(list.record().found, list.record().resultCount),
              std::pair(true, size_t(2)));
    EXPECT_EQ(list.bestResult().searched, rects[1]);
    list.matchRects(frame, rects, true, 4);
    EXPECT_EQ(list.record().resultCount, 3u);
}

}  // namespace

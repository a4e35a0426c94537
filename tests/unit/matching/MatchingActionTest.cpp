// The find-then-click actions: where they click, how often, and their result records.
// Whole runs that find and click images are the demo task's, in tests/integration/runner.

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "MatchingTestKit.h"
#include "TaskContext.h"
#include "TestFiles.h"
#include "actions/FindClick.h"
#include "actions/ImageAction.h"
#include "actions/MVClickColorAction.h"
#include "actions/MVSaveCoordAction.h"
#include "conditions/ScreenConditions.h"
#include "engine/RandomPick.h"

using namespace autoscene::engine;
using namespace autoscene::conditions;
using namespace autoscene::actions;
using autoscene::platform::MouseOp;
using namespace autoscene::test;

namespace {

// A task folder with one image cut from `frame` at `cut`, a crop, a rectangle
// variable and an orange colour.
class MatchingActionTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = noiseFrame(200, 120, 21);
        ASSERT_TRUE(QDir().mkpath(dir.filePath(QStringLiteral("image"))));
        ASSERT_TRUE(cv::imwrite(dir.filePath(QStringLiteral("image/t.png")).toStdString(),
                                frame(cut).clone()));
        kit.open(readFile(AUTOSCENE_FIXTURES "/tasks/find-and-click/script.json"));
        kit.task.folderPath = dir.path() + "/";
        task.frame = frame;
        task.cycleCount = 1;
    }

    ImageAction::Target button(int searchId = 0) {
        const SearchArea area(*kit.definitions, searchId);
        return {QStringLiteral("button"), makeTemplateMatcher(kit.task, 1, area.crop()), area,
                QPoint(130, 60)};
    }

    QTemporaryDir dir;
    cv::Mat frame;
    const cv::Rect cut{140, 70, 20, 16};
    TaskContext<> kit;
    TaskInfo task;
};

TEST_F(MatchingActionTest, ImageActionClicksInsideTheMatchAsOftenAsAskedAndMovesItsClickArea) {
    ImageAction action(*kit.context, button(), std::nullopt, MouseOp::RightClick,
                       ClickTiming{0.0f, 3, 0.25f}, 1.5f);
    const std::int64_t before = kit.clock.nowMs();
    EXPECT_FLOAT_EQ(action.run(task), 1.5f);
    EXPECT_EQ(kit.clock.nowMs() - before, 500);  // two intervals between three clicks

    const auto inputs = kit.target.inputs();
    ASSERT_EQ(inputs.size(), 3u);
    const RecordedInput& first = inputs[0];
    for (const RecordedInput& input : inputs) {
        EXPECT_EQ(std::tuple(input.code, input.point.x, input.point.y, input.detail),
                  std::tuple(int(MouseOp::RightClick), first.point.x, first.point.y, first.detail));
    }
    EXPECT_TRUE(QRect(140, 70, 21, 17).contains(first.point.x, first.point.y));

    const QJsonObject result = action.state(std::this_thread::get_id());
    EXPECT_EQ(std::tuple(result["clicked"].toBool(), result["alias"].toString(),
                         result["sim"].toDouble(), result["points"][0]["x"].toInt()),
              std::tuple(true, "button", 1.0, first.point.x));

    // Drawn at (135, 65) while the image sat at (130, 60); found at (140, 70).
    ImageAction moved(*kit.context, button(), kit.definitions->cropRect(10), MouseOp::LeftClick,
                      ClickTiming{0.1f, 1, 0.0f}, 0.0f);
    moved.run(task);
    ASSERT_EQ(kit.target.inputs().size(), 4u);
    EXPECT_TRUE(QRect(145, 75, 5, 5)
                    .contains(kit.target.inputs()[3].point.x, kit.target.inputs()[3].point.y));
    EXPECT_EQ(kit.target.inputs()[3].detail, 100);

    // Count zero records the point but sends nothing.
    ImageAction none(*kit.context, button(), std::nullopt, MouseOp::LeftClick,
                     ClickTiming{0.0f, 0, 0.0f}, 0.0f);
    none.run(task);
    EXPECT_EQ(kit.target.inputs().size(), 4u);
    EXPECT_TRUE(none.state(std::this_thread::get_id())["clicked"].toBool());
    EXPECT_EQ(none.state(std::this_thread::get_id())["points"].toArray().size(), 1);
}

TEST(ClickArea, AnAreaMovedPastTheIntRangeStaysAtItsEdge) {
    // The largest area a task can hold, drawn where the target sat far to the left.
    constexpr int kLimit = (1 << 30) - 1;
    const QRect moved = clickRect(QRect(kLimit - 10, kLimit - 10, 10, 10), QPoint(-kLimit, -kLimit),
                                  QPoint(500, 400), QRect());
    for (int pick = 0; pick < 20; ++pick) {
        const QPoint point = randomPointIn(moved);
        EXPECT_GE(point.x(), kLimit - 10) << "not wrapped to the other side";
        EXPECT_GE(point.y(), kLimit - 10);
    }
}

TEST_F(MatchingActionTest, ImageActionClicksNothingWhenTheImageIsAbsentOrBroken) {
    ImageAction elsewhere(*kit.context, button(12), std::nullopt, MouseOp::LeftClick, ClickTiming{},
                          2.0f);
    EXPECT_FLOAT_EQ(elsewhere.run(task), 0.0f);
    const QJsonObject result = elsewhere.state(std::this_thread::get_id());
    EXPECT_TRUE(!result["clicked"].toBool() && result["sim"].toDouble() < 0.9);

    ImageAction::Target missing = button();
    missing.matcher = makeTemplateMatcher(kit.task, 99, std::nullopt);
    ImageAction gone(*kit.context, missing, std::nullopt, MouseOp::LeftClick, ClickTiming{}, 2.0f);
    EXPECT_FLOAT_EQ(gone.run(task), 0.0f);
    EXPECT_EQ(gone.state(std::this_thread::get_id())["err"].toString(), "图片不存在，请重新添加");
    EXPECT_TRUE(kit.target.inputs().empty());
}

TEST_F(MatchingActionTest, SaveCoordWritesEveryFoundRectangle) {
    frame(cut).copyTo(frame(cv::Rect(10, 10, 20, 16)));
    MVVariable* places = kit.definitions->find(11);
    places->setValue(QStringLiteral("0,0,60,60|120,50,60,60|0,80,60,40"));
    MVSaveCoordAction action(button(11), places, std::nullopt, SaveCoordKind::Rect);
    action.run(task);
    EXPECT_EQ(places->value(), QStringLiteral("10,10,20,16|140,70,20,16"));
    const QJsonObject result = action.state(std::this_thread::get_id());
    EXPECT_EQ(std::tuple(result["exist"].toBool(), result["rects"].toString(),
                         result["variable_name"].toString(), result["image_name"].toString()),
              std::tuple(true, "10,10,20,16|140,70,20,16", "places", "button"));

    places->setValue(QStringLiteral("0,80,60,40"));
    ++task.cycleCount;
    action.run(task);
    EXPECT_FALSE(action.state(std::this_thread::get_id())["exist"].toBool());
    EXPECT_EQ(places->value(), QStringLiteral("0,80,60,40"));
}

TEST_F(MatchingActionTest, ClickColorClicksTheFirstHitAndReportsWhatIsMissing) {
    frame(cv::Rect(50, 40, 3, 3)).setTo(cv::Scalar(0x00, 0x80, 0xff));
    frame(cv::Rect(150, 40, 3, 3)).setTo(cv::Scalar(0x00, 0x80, 0xff));
    const MVClickColorAction::Colour orange{QStringLiteral("orange"), 0xff8000, 0.99f};
    const auto clickColour = [&](std::optional<MVClickColorAction::Colour> colour, SearchArea area,
                                 std::optional<QRect> clickArea = std::nullopt,
                                 ClickTiming timing = {}) {
        return MVClickColorAction(*kit.context, std::move(colour), area, clickArea,
                                  MouseOp::LeftClick, timing, 0.5f);
    };
    MVClickColorAction action =
        clickColour(orange, SearchArea(*kit.definitions, 12), std::nullopt, {0.0f, 2, 0.0f});
    EXPECT_FLOAT_EQ(action.run(task), 0.5f);
    EXPECT_EQ(action.currentPoint(), QPoint(50, 40));
    const auto inputs = kit.target.inputs();
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_EQ(QPoint(inputs[1].point.x, inputs[1].point.y), QPoint(50, 40));
    EXPECT_TRUE(action.state(std::this_thread::get_id())["clicked"].toBool());

    clickColour(orange, SearchArea(*kit.definitions, 12), QRect(0, 0, 2, 2)).run(task);
    EXPECT_TRUE(
        QRect(50, 40, 3, 3)
            .contains(kit.target.inputs().back().point.x, kit.target.inputs().back().point.y));

    MVClickColorAction noColour = clickColour(std::nullopt, SearchArea(*kit.definitions, 12));
    EXPECT_FLOAT_EQ(noColour.run(task), 0.0f);
    EXPECT_EQ(noColour.state(std::this_thread::get_id())["err"].toString(),
              "颜色异常,请确认颜色是否被删除");
    MVClickColorAction noArea = clickColour(orange, SearchArea());
    EXPECT_FLOAT_EQ(noArea.run(task), 0.0f);
    EXPECT_EQ(noArea.state(std::this_thread::get_id())["err"].toString(), " 查找范围异常");

    frame(cv::Rect(50, 40, 3, 3)).setTo(cv::Scalar(0, 0, 0));
    MVClickColorAction absent = clickColour(orange, SearchArea(*kit.definitions, 12));
    EXPECT_FLOAT_EQ(absent.run(task), 0.0f);
    EXPECT_EQ(absent.currentPoint(), QPoint(-1, -1));
    EXPECT_EQ(kit.target.inputs().size(), 3u);
}

}  // namespace

// Label detection: decoding the network's rows, the tiny YOLO network of the fixtures
// run through OpenCV, the per-cycle cache, and the rules by which label
// conditions and actions pick their box (on a detector stub with chosen boxes).

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "TaskContext.h"
#include "TestFiles.h"
#include "actions/LabelAction.h"
#include "actions/MVSaveLabelCoordAction.h"
#include "actions/RuntimeItems.h"
#include "conditions/LabelCondition.h"
#include "engine/MVVariable.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"

using namespace autoscene::engine;
using namespace autoscene::recognition;
using namespace autoscene::conditions;
using namespace autoscene::actions;
using namespace autoscene::test;

namespace {

LabelBox box(float x1, float y1, float x2, float y2, float probability, const QString& name) {
    return {x1, y1, x2, y2, probability, name.isEmpty() ? -1 : 0, name};
}

// Rows of [cx, cy, w, h, objectness, score of class 0, score of class 1].
cv::Mat rows(const std::vector<std::array<float, 7>>& values) {
    cv::Mat m(int(values.size()), 7, CV_32FC1);
    for (size_t r = 0; r < values.size(); ++r) {
        std::copy(values[r].begin(), values[r].end(), m.ptr<float>(int(r)));
    }
    return m;
}

// Every box as "x1,y1,x2,y2 probability name#class", rounded to what the checks need.
std::string text(const std::vector<LabelBox>& boxes) {
    QStringList out;
    for (const LabelBox& b : boxes) {
        out << QString::asprintf("%.1f,%.1f,%.1f,%.1f %.2f %s#%d", b.x1, b.y1, b.x2, b.y2,
                                 b.probability, qPrintable(b.name), b.classId);
    }
    return out.join(QStringLiteral(" | ")).toStdString();
}

TEST(LabelDecoding, KeepsProbableRowsScaledToTheFrameInOrder) {
    const QStringList names{QStringLiteral("cat"), QStringLiteral("dog")};
    EXPECT_EQ(text(decodeDetections(rows({{0.5f, 0.5f, 0.5f, 0.25f, 0.9f, 0.29f, 0.0f},
                                          {0.5f, 0.5f, 0.5f, 0.25f, 0.9f, 0.0f, 0.3f},
                                          {0.1f, 0.2f, 0.1f, 0.2f, 0.9f, 0.7f, 0.1f}}),
                                    cv::Size(200, 100), 0.3f, names)),
              "50.0,37.5,150.0,62.5 0.30 dog#1 | 10.0,10.0,30.0,30.0 0.70 cat#0");
}

TEST(LabelDecoding, OverlappingBoxesOfOneClassKeepTheMostProbable) {
    const auto boxes = decodeDetections(rows({{0.50f, 0.5f, 0.4f, 0.4f, 1.0f, 0.6f, 0.0f},
                                              {0.51f, 0.5f, 0.4f, 0.4f, 1.0f, 0.9f, 0.0f},
                                              {0.50f, 0.5f, 0.4f, 0.4f, 1.0f, 0.0f, 0.5f},
                                              {0.10f, 0.1f, 0.1f, 0.1f, 1.0f, 0.4f, 0.0f}}),
                                        cv::Size(100, 100), 0.3f, {});
    EXPECT_EQ(text(boxes),
              "31.0,30.0,71.0,70.0 0.90 #0 | 30.0,30.0,70.0,70.0 0.50 #1 | "
              "5.0,5.0,15.0,15.0 0.40 #0");
    EXPECT_TRUE(
        decodeDetections(cv::Mat(3, 5, CV_32FC1, cv::Scalar(1)), {10, 10}, 0.3f, {}).empty());
    // A broken model's NaNs make no box.
    const float nan = std::nanf("");
    EXPECT_TRUE(decodeDetections(rows({{nan, 0.5f, 0.1f, 0.1f, 1.0f, 0.9f, 0.0f},
                                       {0.5f, 0.5f, 0.1f, 0.1f, 1.0f, nan, nan}}),
                                 {10, 10}, 0.3f, {})
                    .empty());
}

class TinyYolo : public ::testing::Test {
protected:
    QTemporaryDir dir;
    const LabelModelFiles files = labelModelFiles(AUTOSCENE_FIXTURES "/label-model", "tiny");
};

TEST_F(TinyYolo, DetectsAtTheNetworkInputAndScalesBackToTheFrame) {
    LabelDetector detector;
    ASSERT_TRUE(detector.load(files));
    EXPECT_EQ(detector.className(0) + '|' + detector.className(1), QStringLiteral("button|"));

    const cv::Mat frame(100, 200, CV_8UC3, cv::Scalar(10, 20, 30));
    EXPECT_EQ(text(detector.detect(frame, 0.3f)), "50.0,37.5,150.0,62.5 0.80 button#0");
    EXPECT_TRUE(detector.detect(frame, 0.81f).empty());
    EXPECT_TRUE(detector.detect(cv::Mat(), 0.3f).empty());

    // A four-channel frame is converted before detection.
    TaskInfo task;
    cv::cvtColor(frame, task.frame, cv::COLOR_BGR2BGRA);
    EXPECT_EQ(text(labelsOf(task, &detector)), "50.0,37.5,150.0,62.5 0.80 button#0");
}

TEST_F(TinyYolo, BrokenModelFilesFailToLoadAndDetectNothing) {
    LabelDetector detector;
    const QString spoilt = QDir(dir.path()).filePath(QStringLiteral("spoilt"));
    ASSERT_TRUE(detector.load({files.configuration, files.weights, spoilt}));  // no names
    const cv::Mat frame(32, 32, CV_8UC3, cv::Scalar::all(0));
    EXPECT_EQ(text(detector.detect(frame, 0.3f)), "8.0,12.0,24.0,20.0 0.80 #0");

    writeFile(spoilt, readFile(files.weights).chopped(4));
    EXPECT_FALSE(detector.load({files.configuration, spoilt, files.names}));
    EXPECT_FALSE(detector.loaded());
    EXPECT_TRUE(detector.detect(frame, 0.3f).empty());

    for (const char* configuration :
         {"[net]\nwidth=32\nheight=32\n[convolutional]\nfilters=-4\n", "not a network"}) {
        writeFile(spoilt, configuration);
        EXPECT_FALSE(detector.load({spoilt, files.weights, files.names}));
    }
    EXPECT_TRUE(labelModelFiles(dir.path(), QStringLiteral("../x")).configuration.isEmpty());
}

TEST_F(TinyYolo, ARunLoadsTheTasksModelAndClicksTheLabelItsConditionFinds) {
    // Its one event clicks label 0 where its condition finds it, then stops.
    autoscene::model::TaskDocument document;
    ASSERT_TRUE(
        document.openText(readFile(AUTOSCENE_FIXTURES "/tasks/label-click/script.json")).ok);
    document.folderPath = AUTOSCENE_FIXTURES "/label-model";
    RuntimeFactory factory;
    registerAllRuntimeItems(factory, nullptr);
    InProcessTarget target;
    target.setFrames({cv::Mat(100, 200, CV_8UC3, cv::Scalar(10, 20, 30))});
    TaskRunner runner(document, factory, target, std::make_shared<ManualClock>());
    runner.setLoopIntervalMs(0);
    ASSERT_TRUE(runner.start({{TargetKind::Desktop}}));
    ASSERT_TRUE(runner.waitUntilIdle(std::chrono::seconds(10)));
    const auto inputs = target.inputs();
    ASSERT_EQ(inputs.size(), 1u);
    EXPECT_TRUE(QRect(50, 38, 101, 26).contains(inputs[0].point.x, inputs[0].point.y));
}

// Returns the boxes it is given and counts its detections.
class StubDetector : public ILabelDetector {
public:
    std::vector<LabelBox> detect(const cv::Mat&, float threshold) override {
        ++detections;
        std::vector<LabelBox> kept;
        std::ranges::copy_if(boxes, std::back_inserter(kept),
                             [&](const LabelBox& b) { return b.probability >= threshold; });
        return kept;
    }
    QString className(int id) const override {
        return id == 0 ? QStringLiteral("coin") : QString();
    }

    std::vector<LabelBox> boxes;
    int detections = 0;
};

class LabelRules : public ::testing::Test {
protected:
    void SetUp() override {
        task.frame = cv::Mat(100, 200, CV_8UC3, cv::Scalar::all(0));
        task.cycleCount = 1;
        detector.boxes = {box(10, 10, 30, 30, 0.29f, QStringLiteral("coin")),
                          box(40, 10, 60, 30, 0.6f, QStringLiteral("coin")),
                          box(0, 0, 5, 5, 0.95f, QStringLiteral("gem")),
                          box(100, 50, 120, 70, 0.7f, QStringLiteral("coin"))};
    }

    LabelCondition condition(float minProbability, int expected = kFound) {
        return LabelCondition(1, ScreenItem::Settings{expected, 0.0f, false}, clock, &detector, 0,
                              minProbability, SearchArea());
    }

    ManualClock clock;
    StubDetector detector;
    TaskInfo task;
};

TEST_F(LabelRules, TheFirstProbableBoxOfTheLabelIsFoundAndDetectionRunsOncePerCycle) {
    LabelCondition present = condition(0.5f);
    LabelCondition absent = condition(0.5f, kNotFound);
    EXPECT_TRUE(present.evaluate(task));
    EXPECT_FALSE(absent.evaluate(task));
    EXPECT_EQ(present.result(std::this_thread::get_id()).box->x1, 40.0f);
    EXPECT_EQ(detector.detections, 1);

    ++task.cycleCount;
    detector.boxes.resize(3);
    LabelCondition strict = condition(0.99f);
    EXPECT_FALSE(strict.evaluate(task));
    EXPECT_EQ(detector.detections, 2);
    // The 0.29 box never comes out of detection, whatever the condition asks.
    LabelCondition lax = condition(0.0f);
    EXPECT_TRUE(lax.evaluate(task));
    EXPECT_EQ(detector.detections, 2);

    const QJsonObject status = lax.describe(std::this_thread::get_id());
    EXPECT_EQ(status["type"].toString() + ' ' + status["text"].toString(),
              "label 标签:coin,坐标:40,10,20,20,相似度:0.6");
}

TEST_F(LabelRules, SearchRectanglesMustHoldTheBoxWhollyAndTheLastConsideredIsKept) {
    const std::vector<LabelBox> boxes = labelsOf(task, &detector);
    LabelFind find = findLabel(boxes, QStringLiteral("coin"), 0.5f, {QRect(100, 50, 20, 20)});
    ASSERT_TRUE(find.found);  // edges touch
    EXPECT_EQ(find.box->x1, 100.0f);

    find = findLabel(boxes, QStringLiteral("coin"), 0.5f,
                     {QRect(101, 50, 30, 30), QRect(0, 0, 59, 30)});
    EXPECT_FALSE(find.found);
    ASSERT_TRUE(find.box);
    EXPECT_EQ(find.box->x1, 100.0f);

    // Boxes without a name never match, not even a label without one.
    EXPECT_FALSE(findLabel({box(0, 0, 9, 9, 1.0f, QString())}, QString(), 0.0f, {}).box);
    EXPECT_TRUE(labelsOf(task, nullptr).empty());
}

class LabelActions : public LabelRules {
protected:
    void SetUp() override {
        LabelRules::SetUp();
        kit.open(R"({"var_list": [{"type": 1, "id": 11, "name": "coins", "value": ""}]})");
    }

    TaskContext<> kit;
};

TEST_F(LabelActions, LabelActionClicksInTheBoxOrReportsTheMissingLabel) {
    LabelAction action(*kit.context, LabelTarget{&detector, 0, 0.65f, SearchArea()}, std::nullopt,
                       autoscene::platform::MouseOp::LeftClick, ClickTiming{0.0f, 2, 0.0f}, 0.5f);
    EXPECT_FLOAT_EQ(action.run(task), 0.5f);
    const auto inputs = kit.target.inputs();
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_TRUE(QRect(100, 50, 21, 21).contains(inputs[0].point.x, inputs[0].point.y));
    QJsonObject result = action.state(std::this_thread::get_id());
    EXPECT_EQ(
        std::tuple(result["clicked"].toBool(), result["alias"].toString(),
                   std::lround(result["sim"].toDouble() * 100), result["points"].toArray().size()),
        std::tuple(true, "coin", 70, 1));

    LabelAction unknown(*kit.context, LabelTarget{&detector, 3, 0.1f, SearchArea()}, std::nullopt,
                        autoscene::platform::MouseOp::LeftClick, ClickTiming{}, 0.5f);
    EXPECT_FLOAT_EQ(unknown.run(task), 0.0f);
    result = unknown.state(std::this_thread::get_id());
    EXPECT_EQ(std::pair(result["clicked"].toBool(), result["err"].toString()),
              std::pair(false, QStringLiteral("标签异常，请检查模型或标签是否存在")));
    EXPECT_EQ(kit.target.inputs().size(), 2u);
}

TEST_F(LabelActions, SaveLabelCoordStoresEveryBoxOrItsMovedArea) {
    MVVariable* coins = kit.definitions->find(11);
    const auto save = [&](float minProbability, std::optional<QRect> area, SaveCoordKind kind) {
        return MVSaveLabelCoordAction(LabelTarget{&detector, 0, minProbability, SearchArea()},
                                      coins, area, kind);
    };
    MVSaveLabelCoordAction rects = save(0.5f, std::nullopt, SaveCoordKind::Rect);
    rects.run(task);
    EXPECT_EQ(coins->value(), QStringLiteral("40,10,20,20|100,50,20,20"));
    QJsonObject result = rects.state(std::this_thread::get_id());
    EXPECT_EQ(
        std::tuple(result["exist"].toBool(), result["label"].toString(),
                   result["variable_name"].toString(), std::lround(result["sim"].toDouble() * 100)),
        std::tuple(true, "coin", "coins", 70));

    save(0.65f, QRect(500, 500, 4, 6), SaveCoordKind::Centre).run(task);
    EXPECT_EQ(coins->value(), QStringLiteral("101,52,1,1"));
}

}  // namespace

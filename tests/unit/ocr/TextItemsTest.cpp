// The screen-text condition, the click-text action and the screen-value action in whole
// runs on the in-process target, reading through the real service.

#include <gtest/gtest.h>

#include <QJsonArray>

#include "InProcessTarget.h"
#include "ManualClock.h"
#include "RenderedText.h"
#include "SharedOcrService.h"
#include "actions/RuntimeItems.h"
#include "engine/ItemGroup.h"
#include "engine/MVVariable.h"
#include "engine/RunObservers.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "engine/Scene.h"
#include "engine/TaskRunner.h"
#include "model/RectText.h"
#include "model/TaskDocument.h"
#include "text/OcrClient.h"

using namespace autoscene::engine;
using namespace autoscene::ocr::testkit;
using namespace autoscene::test;
using namespace autoscene::text;
using autoscene::model::parseRectText;
using namespace std::chrono_literals;

namespace {

// Keeps what the run view would show of the events that fire.
class TextItems : public testing::Test, public IMVSceneEvent {
protected:
    void actionsDone(const Scene&, const RuntimeEvent& event) override {
        const std::lock_guard lock(mutex_);
        fired.push_back(event.name);
        if (event.conditions) {
            conditions.push_back(event.conditions->describe(std::this_thread::get_id()));
        }
        for (const auto& action : event.actions) {
            actions.push_back(action->state(std::this_thread::get_id()));
        }
    }

    // Runs tasks/text-items on the labels until it stops itself. "read": when the top band
    // contains variable 12, click "Start Game", again with offset crop 14, store the bottom
    // crop's text in variable 11 ("coins") and stop. "give up" stops when "read" did not fire.
    void run(const std::vector<TextLabel>& labels) {
        ASSERT_TRUE(document.openFolder(QStringLiteral(AUTOSCENE_FIXTURES "/tasks/text-items")).ok);
        RuntimeFactory factory;
        autoscene::actions::registerAllRuntimeItems(
            factory, std::make_shared<OcrClient>(sharedOcrService().url()));
        target.setFrames({renderTextFrame({640, 360}, labels)});
        runner = std::make_unique<TaskRunner>(document, factory, target,
                                              std::make_shared<ManualClock>());
        runner->setLoopIntervalMs(0);
        runner->setSceneObserver(this);
        ASSERT_TRUE(runner->start({{TargetKind::Desktop}}));
        ASSERT_TRUE(runner->waitUntilIdle(60s));
    }

    autoscene::model::TaskDocument document;
    InProcessTarget target;
    std::unique_ptr<TaskRunner> runner;
    std::mutex mutex_;
    QStringList fired;
    std::vector<QJsonObject> conditions;
    std::vector<QJsonObject> actions;
};

TEST_F(TextItems, ConditionFindsTheTextAndTheActionsClickAndReadIt) {
    run({{"开始游戏", {30, 40}, 40}, {"Start Game", {330, 44}, 36}, {"12850", {40, 240}, 40}});
    ASSERT_EQ(fired, QStringList{QStringLiteral("read")});
    const QJsonValue condition = conditions.at(0)["item_state"][0];
    EXPECT_EQ(std::tuple(condition["item_state"].toInt(), condition["text_rects"].toArray().size(),
                         condition["text_rects"][0]["text"].toString()),
              std::tuple(1, 1, QStringLiteral("开始游戏")));
    EXPECT_NEAR(condition["text_rects"][0]["x"].toInt(), 30, 8);

    const std::vector<RecordedInput> inputs = target.inputs();
    ASSERT_EQ(inputs.size(), 2u);
    // "Start Game" drawn 36 px high from (330, 44): about 170 x 30 pixels of ink.
    EXPECT_TRUE(QRect(325, 44, 185, 40).contains(inputs[0].point.x, inputs[0].point.y))
        << inputs[0].point.x << "," << inputs[0].point.y;
    const QJsonObject click = actions.at(0);
    EXPECT_EQ(std::tuple(click["clicked"].toBool(), click["is_deviation"].toBool(),
                         click["text"].toString(), click["results"].toArray().size()),
              std::tuple(true, false, "Start Game", 1));
    // The offset crop 2,3,4,5 is placed at the corner of the text found.
    const QRect found = parseRectText(click["rect"].toString());
    const QRect area = parseRectText(actions.at(1)["rect"].toString());
    EXPECT_TRUE(actions.at(1)["is_deviation"].toBool());
    EXPECT_EQ(area, QRect(found.topLeft() + QPoint(2, 3), QSize(4, 5)));
    EXPECT_TRUE(area.adjusted(0, 0, 1, 1).contains(inputs[1].point.x, inputs[1].point.y));

    EXPECT_EQ(runner->definitions().find(11)->value(), "12850");
    EXPECT_TRUE(actions.at(2)["changed"].toBool());
}

TEST_F(TextItems, AbsentTextFiresNothing) {
    run({{"退出", {30, 40}, 40}, {"Start Game", {330, 44}, 36}});
    EXPECT_EQ(fired, QStringList{QStringLiteral("give up")});
    EXPECT_TRUE(target.inputs().empty());
    EXPECT_EQ(runner->definitions().find(11)->value(), "none");
}

}  // namespace

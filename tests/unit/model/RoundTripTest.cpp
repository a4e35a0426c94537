// Saving and reopening tasks: format, values, and the deliberate asymmetries. Key order
// and the fixed point of resaving are checked through the task tool (TaskToolTest).

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "model/EditorActions.h"
#include "model/TaskDocument.h"

using namespace autoscene::model;
using namespace autoscene::test;

namespace {

QByteArray everyRecord() {
    return readFile(fixturePath("tasks/every-record/script.json"));
}

TEST(RoundTrip, WritesFourSpaceIndentAndShortestFloatsAndClonesDeep) {
    TaskDocument task;
    openOrFail(task, everyRecord());
    const QByteArray saved = task.serialise();
    EXPECT_TRUE(saved.startsWith("{\n    \"id\": 0,\n    \"name\": "));
    EXPECT_TRUE(saved.contains("\"postpone\": 0.2,") && saved.contains("\"timeout\": 1.5,"));

    SCOPED_TRACE("a cloned event is deep and independent");
    EditorEvent copy = task.scenes.at(0).events.at(0);
    static_cast<EditorTapAction&>(*copy.actions.at(0)).postpone = 9;
    copy.conditions.take(0);
    const EditorEvent& original = task.scenes.at(0).events.at(0);
    EXPECT_FLOAT_EQ(static_cast<const EditorTapAction&>(*original.actions.at(0)).postpone, 0.2f);
    EXPECT_EQ(original.conditions.items().size(), 6u);
}

TEST(RoundTrip, OlderFileKeepsTheDocumentedAsymmetries) {
    TaskDocument task;
    openOrFail(task, readFile(fixturePath("tasks/legacy/script.json")));
    // full_screen stands in for a missing task_mode and is not written back.
    EXPECT_EQ(std::pair(task.settings.taskMode, task.settings.isFullScript),
              std::pair(int(TaskMode::FullScreen), true));
    const QByteArray saved = task.serialise();
    EXPECT_TRUE(saved.contains("\"task_mode\": 1"));
    for (const char* dropped : {"full_screen", "is_full_script", "model_id"}) {
        EXPECT_FALSE(saved.contains(dropped)) << dropped;
    }

    // Types 8, 22 and 99 drop out; the rest keep their order.
    const auto& actions = task.scenes.at(0).events.at(0).actions;
    std::vector<int> types;
    std::ranges::transform(actions, std::back_inserter(types), [](auto& a) { return a->type(); });
    EXPECT_EQ(types, (std::vector{EditorTapAction::kType, EditorClickColorAction::kType,
                                  EditorStopAction::kType}));
    EXPECT_TRUE(task.scenes.at(0).events.at(0).disabled);

    // The tap reads both pauses; the click colour reads multi_interval only.
    const auto& tap = static_cast<const EditorTapAction&>(*actions[0]);
    EXPECT_EQ(std::tuple(tap.interval, tap.multiInterval,
                         static_cast<const EditorClickColorAction&>(*actions[1]).interval),
              std::tuple(0.2f, 0.4f, 0.0f));

    // use_count is recomputed, full-width commas read as commas.
    EXPECT_TRUE(saved.contains("\"use_count\": 0"));
    EXPECT_EQ(task.images.at(0).rect, QRect(10, 20, 30, 40));
}

TEST(RoundTrip, ClickColourPauseComesBackAsDefaultWhileTapKeepsIt) {
    TaskDocument task;
    auto& event = task.defaultScene.events.emplace_back(QStringLiteral("e"));
    event.actions.push_back(std::make_unique<EditorTapAction>());
    event.actions.push_back(std::make_unique<EditorClickColorAction>());
    event.actions.push_back(std::make_unique<EditorADBAppAction>());
    static_cast<EditorTapAction&>(*event.actions[0]).interval = 200;
    static_cast<EditorClickColorAction&>(*event.actions[1]).interval = 200;
    static_cast<EditorADBAppAction&>(*event.actions[2]).packageName = QStringLiteral("com.example");

    const QByteArray saved = task.serialise();
    EXPECT_TRUE(saved.contains("\"type\": 22"));
    openOrFail(task, saved);
    const auto& actions = task.defaultScene.events.at(0).actions;
    ASSERT_EQ(actions.size(), 2u);
    EXPECT_EQ(std::pair(static_cast<const EditorTapAction&>(*actions[0]).interval,
                        static_cast<const EditorClickColorAction&>(*actions[1]).interval),
              std::pair(200.0f, 0.0f));
}

TEST(RoundTrip, TaskModeFollowsWindowInfoOnlyWhenNothingElseSaysSo) {
    TaskDocument task;
    openOrFail(task, R"({"window_info": {"title": "x"}})");
    EXPECT_EQ(task.settings.taskMode, int(TaskMode::Window));
    openOrFail(task, R"({"window_info": {}, "full_screen": false})");
    EXPECT_EQ(task.settings.taskMode, int(TaskMode::FullScreen));  // the default stays
    openOrFail(task, R"({"full_screen": true, "task_mode": 3})");
    EXPECT_EQ(task.settings.taskMode, 3);
}

TEST(RoundTrip, ModelIdIsWrittenOnlyForATaskThatUsesLabels) {
    TaskDocument task;
    openOrFail(task, R"({"model_id": "m"})");
    EXPECT_EQ(task.modelId, QStringLiteral("m"));
    EXPECT_FALSE(task.serialise().contains("model_id"));

    openOrFail(task, everyRecord());
    EXPECT_TRUE(task.serialise().contains("\"model_id\": \"model-1\""));
    task.modelId.clear();
    EXPECT_FALSE(task.serialise().contains("model_id"));
}

TEST(RoundTrip, SceneNamesAreUniqueAndCaseSensitive) {
    TaskDocument task;
    task.scenes.emplace_back(QStringLiteral("Menu"));
    for (const char* taken : {"默认界面", "通用事件(低)", "Menu"}) {
        EXPECT_FALSE(task.isSceneNameFree(QString::fromUtf8(taken))) << taken;
    }
    EXPECT_TRUE(task.isSceneNameFree(QStringLiteral("menu")));
    EXPECT_EQ(task.sceneByName(QStringLiteral("通用事件")), &task.commonEvent);
}

}  // namespace

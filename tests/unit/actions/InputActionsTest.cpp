// Input actions built from task records and run on the in-process target: what reaches
// the target, in which order, with which timing, and what the result records say.

#include <gtest/gtest.h>

#include <stop_token>

#include <QJsonArray>
#include <QRect>
#include <QStringList>
#include <thread>

#include "TaskContext.h"
#include "actions/InputActions.h"
#include "actions/RuntimeItems.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorScene.h"

using namespace autoscene::engine;
using namespace autoscene::model;
using autoscene::actions::MVSlideAction;
using autoscene::platform::KeyOp;
using autoscene::platform::MouseOp;
using autoscene::test::RecordedInput;
using Kind = RecordedInput::Kind;
using Codes = std::vector<std::pair<int, int>>;

namespace {

// Mouse and wheel inputs as "code@x,y" (mouse codes: 3 move, 4/5 left down/up, 7 right up).
std::string trace(const std::vector<RecordedInput>& inputs) {
    std::string out;
    for (const RecordedInput& input : inputs) {
        out += (out.empty() ? "" : " ") + std::to_string(input.code) + '@' +
               std::to_string(input.point.x) + ',' + std::to_string(input.point.y);
    }
    return out;
}

// One scene whose only event holds `actions`, with variables 1..n holding `places`.
class InputActions : public ::testing::Test, protected autoscene::test::TaskContext<> {
protected:
    InputActions() { autoscene::actions::registerAllRuntimeItems(factory, nullptr); }

    std::unique_ptr<IAction> build(const QString& action, const QStringList& places = {}) {
        QStringList vars;
        for (int i = 0; i < places.size(); ++i) {
            vars << QStringLiteral(R"({"type": 1, "id": %1, "name": "p%1", "value": "%2"})")
                        .arg(i + 1)
                        .arg(places[i]);
        }
        open(QStringLiteral(R"({"var_list": [%1], "scene_list": [{"name": "s",
            "event_list": [{"name": "e", "action_list": [%2]}]}]})")
                 .arg(vars.join(','), action)
                 .toUtf8());
        info.kind = TargetKind::Window;
        return factory.action(*task.scenes.at(0).events.at(0).actions.at(0), *context);
    }

    QJsonObject result(IAction& action) { return action.state(std::this_thread::get_id()); }

    // Every input so far as {code, detail}.
    Codes codes() const {
        Codes out;
        for (const RecordedInput& input : target.inputs()) {
            out.emplace_back(input.code, input.detail);
        }
        return out;
    }

    RuntimeFactory factory;
    TaskInfo info;
};

TEST_F(InputActions, TapRepeatsEveryPointWithItsPausesAndRandomPress) {
    auto tap = build(R"({"type": 1, "variable_id": 1, "button": 1, "press_time": 0,
        "click_times": 2, "interval": 1.5, "multi_interval": 0.25, "postpone": 0.5})",
                     {"10,20,0,0|30,40,4,6"});
    const std::int64_t before = clock.nowMs();
    EXPECT_FLOAT_EQ(tap->run(info), 0.5f);
    // Two repetitions of two points: one interval between repetitions, a pause after each point.
    EXPECT_EQ(clock.nowMs() - before, 1500 + 4 * 250);

    const auto inputs = target.inputs();
    ASSERT_EQ(inputs.size(), 4u);
    for (const RecordedInput& input : inputs) {
        EXPECT_EQ(input.code, int(MouseOp::LeftClick));
        EXPECT_TRUE(input.detail >= 30 && input.detail <= 50) << input.detail;
    }
    EXPECT_EQ(QPoint(inputs[0].point.x, inputs[0].point.y), QPoint(10, 20));
    EXPECT_TRUE(QRect(30, 40, 5, 7).contains(inputs[1].point.x, inputs[1].point.y));
    EXPECT_EQ(result(*tap)["points"].toArray().size(), 4);

    // No click count taps once; no places, nothing.
    build(R"({"type": 1, "variable_id": 1, "button": 2, "press_time": 0.2, "click_times": 0})",
          {"5,5,0,0"})
        ->run(info);
    build(R"({"type": 1, "variable_id": 1, "button": 1})", {""})->run(info);
    ASSERT_EQ(target.inputs().size(), 5u);
    EXPECT_EQ(target.inputs()[4].code, int(MouseOp::RightClick));
    EXPECT_EQ(target.inputs()[4].detail, 200);
}

TEST_F(InputActions, SlideGoesDownMovesInFiftyMsTicksFromTheFirstPointAndUpAtTheLast) {
    // Shorter than a tick: one step, and the wait past the duration clamps to 0.
    const auto short_ = MVSlideAction::segmentSteps({0, 0}, {9, 9}, 30);
    ASSERT_EQ(short_.size(), 1u);
    EXPECT_EQ(short_[0].waitMs, 0);

    auto slide = build(R"({"type": 7, "var_list": [1, 2, 3], "slide_time": 100,
        "time_list": [0.5, 0.2]})",
                       {"0,0,0,0", "40,0,0,0", "0,80,0,0"});
    const std::int64_t before = clock.nowMs();
    slide->run(info);
    // Down, 4 moves of segment 1 (200 ms) landing exactly on its end, 2 moves of segment 2
    // (slide_time 100 ms) starting over from the first point, up.
    EXPECT_EQ(trace(target.inputs()), "4@0,0 3@10,0 3@20,0 3@30,0 3@40,0 3@0,40 3@0,80 5@0,80");
    EXPECT_EQ(clock.nowMs() - before, 500 + 200 + 100);
}

TEST_F(InputActions, KeyModesAndGroupOrder) {
    build(R"({"type": 11, "key": 65, "event_type": 0})")->run(info);
    auto up = build(R"({"type": 11, "key": 66, "event_type": 2})");
    up->run(info);
    auto group =
        build(R"({"type": 11, "key": 0, "event_type": 3, "group_key": [16777249, 16777248, 83]})");
    group->run(info);

    const Codes expected = {{65, 0}, {66, 2}, {16777249, 1}, {16777248, 1},
                            {83, 1}, {83, 2}, {16777248, 2}, {16777249, 2}};
    EXPECT_EQ(codes(), expected);

    build(R"({"type": 11, "event_type": 3, "group_key": "Ctrl+S"})")->run(info);
    EXPECT_EQ(target.inputs().size(), expected.size());
}

TEST_F(InputActions, AStopCutsTypingSlidesAndKeyGroupsShortAndTheirResultsSaySo) {
    std::stop_source stop;
    info.stop = stop.get_token();
    target.setInputHook([&stop](const RecordedInput&) { stop.request_stop(); });

    // A character outside the BMP on the chunk's edge goes out whole.
    const QString text = QString(15, 'a') + QStringLiteral("😀") + QString(300, 'b');
    auto typing = build(QStringLiteral(R"({"type": 6, "text": "%1"})").arg(text));
    typing->run(info);
    EXPECT_EQ(target.inputs().at(0).text, QString(15, 'a') + QStringLiteral("😀"));
    EXPECT_EQ(result(*typing)["typed"].toString(), target.inputs().at(0).text);
    EXPECT_FALSE(result(*typing)["err"].toString().isEmpty());

    stop = std::stop_source();
    info.stop = stop.get_token();
    auto slide =
        build(R"({"type": 7, "var_list": [1, 2], "slide_time": 60000})", {"0,0,0,0", "400,0,0,0"});
    slide->run(info);
    // Down, then the stop: no moves, but the button is released.
    Codes seen = {{0, 0}, {int(MouseOp::LeftDown), 0}, {int(MouseOp::LeftUp), 0}};
    EXPECT_EQ(codes(), seen);
    EXPECT_FALSE(result(*slide)["err"].toString().isEmpty());

    // The first key goes down, the stop comes, and only that key goes up again.
    stop = std::stop_source();
    info.stop = stop.get_token();
    auto group = build(R"({"type": 11, "event_type": 3, "group_key": [16777249, 65, 66]})");
    group->run(info);
    seen.insert(seen.end(), {{16777249, int(KeyOp::Down)}, {16777249, int(KeyOp::Up)}});
    EXPECT_EQ(codes(), seen);
    EXPECT_TRUE(result(*group)["err"].toString().startsWith("stopped"))
        << result(*group)["err"].toString().toStdString();
}

TEST_F(InputActions, MouseUpAndWheelUseTheRememberedOrNoPoint) {
    build(R"({"type": 17, "button": 7})")->run(info);
    auto wheel = build(R"({"type": 13, "wheel": -3, "point_variable": 9})");
    wheel->run(info);
    EXPECT_EQ(trace(target.inputs()), "7@-1,-1 -3@-1,-1");
    EXPECT_EQ(target.inputs()[1].kind, Kind::Wheel);

    TaskInfo device;
    device.kind = TargetKind::AndroidDevice;
    EXPECT_EQ(wheel->run(device), 0.0f);
    EXPECT_EQ(target.inputs().size(), 2u);
}

// Literal text reaches a real target in the demo task's run (tests/integration/runner).
TEST_F(InputActions, TextComesFromItsVariableAndTheResultNamesWhatCannotBeTyped) {
    auto input = build(R"({"type": 6, "text": "ignored", "variable": 1})", {"Zoë 你好"});
    input->run(info);
    EXPECT_EQ(target.inputs().at(0).text, "Zoë 你好");
    EXPECT_EQ(QStringList({result(*input)["text"].toString(), result(*input)["err"].toString()}),
              QStringList({"Zoë 你好", "not typed: 你好"}));
}

TEST_F(InputActions, InputTheTargetDidNotTakeIsInTheResult) {
    // {action, places}
    const std::pair<const char*, QStringList> cases[] = {
        {R"({"type": 1, "variable_id": 1, "button": 1})", {"10,20,0,0"}},
        {R"({"type": 7, "var_list": [1, 2], "slide_time": 100})", {"0,0,0,0", "40,0,0,0"}},
        {R"({"type": 11, "key": 65, "event_type": 0})", {}},
        {R"({"type": 11, "key": 0, "event_type": 3, "group_key": [16777248, 65]})", {}},
        {R"({"type": 6, "text": "hello"})", {}},
        {R"({"type": 17, "button": 1})", {}},
    };
    for (const auto& [action, places] : cases) {
        auto accepted = build(action, places);
        target.refuseInput({});
        accepted->run(info);
        EXPECT_FALSE(result(*accepted).contains("err")) << action;

        auto refused = build(action, places);
        target.refuseInput("touch: error: device offline");
        refused->run(info);
        EXPECT_EQ(result(*refused)["err"].toString(), "touch: error: device offline") << action;
        EXPECT_EQ(target.takeInputError(info), QString()) << "read once: " << action;
    }
}

TEST_F(InputActions, AppsStartOnDevicesByPackage) {
    auto byPath = build(R"({"type": 16, "app_path": "com.example.app"})");
    info.kind = TargetKind::AndroidDevice;
    byPath->run(info);
    EXPECT_EQ(result(*byPath)["err"].toString(), "");

    // The Android app action is not read back from task files, so it is built directly.
    autoscene::actions::MVADBAppAction named(*context, "com.example.app", nullptr, ".Main",
                                             nullptr);
    EXPECT_FLOAT_EQ(named.run(info), 0.0f);
    autoscene::actions::MVADBAppAction missing(*context, "missing", nullptr, {}, nullptr);
    missing.run(info);
    EXPECT_EQ(result(missing)["err"].toString(), "no such package");

    QStringList started;
    for (const RecordedInput& input : target.inputs()) {
        EXPECT_EQ(input.kind, Kind::App);
        started << input.text;
    }
    EXPECT_EQ(started, QStringList({"com.example.app/", "com.example.app/.Main", "missing/"}));
}

TEST_F(InputActions, StartAppReportsWhyAProgramDidNotStart) {
    auto missing = build(R"({"type": 16, "app_path": "/nonexistent/program"})");
    missing->run(info);
    EXPECT_FALSE(result(*missing)["err"].toString().isEmpty());
    auto present = build(R"({"type": 16, "app_path": "/bin/true"})");
    present->run(info);
    EXPECT_TRUE(result(*present)["err"].toString().isEmpty());
}

}  // namespace

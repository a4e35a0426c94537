// Timers, alarms and randoms during a run, and the actions on variables.

#include <gtest/gtest.h>

#include <thread>

#include "ManualClock.h"
#include "engine/MVAlarm.h"
#include "engine/MVRandom.h"
#include "engine/MVTimer.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/StateActions.h"

using namespace autoscene::engine;
using autoscene::test::ManualClock;

namespace {

// Per-target values per worker and global ones shared are checked in runs: Runner's
// EveryTargetRunsInBothMultiTargetModesWithItsOwnStartValues, ScreenDetection's
// ResultsLandInTheWorkersOwnRecords, ActionPlugin's global variable.

TEST(VariableActions, PlusSubSetAndResetRecordTheirResults) {
    MVVariable counter(1, "次数", "-1", {});
    MVVariable source(2, "src", "abc", {});
    VariableAction plus(VariableAction::Kind::Plus, &counter, {}, nullptr);
    TaskInfo task;
    EXPECT_EQ(plus.run(task), 0.0f);
    const auto id = std::this_thread::get_id();
    EXPECT_EQ(QStringList({counter.value(), plus.state(id)["original"].toString(),
                           plus.state(id)["modify"].toString()}),
              QStringList({"0", "-1", "0"}));

    counter.setValue("1.5");
    plus.run(task);
    EXPECT_EQ(counter.value(), "1.5");
    EXPECT_EQ(plus.state(id)["err"].toString(), "次数不是数字(1.5)");

    counter.setValue("10");
    VariableAction(VariableAction::Kind::Sub, &counter, {}, nullptr).run(task);
    EXPECT_EQ(counter.value(), "9");
    counter.setValue(" 3");  // not an integer by the exact pattern
    VariableAction sub(VariableAction::Kind::Sub, &counter, {}, nullptr);
    sub.run(task);
    EXPECT_FALSE(sub.state(id)["err"].toString().isEmpty());

    VariableAction(VariableAction::Kind::Set, &counter, "x", &source).run(task);
    EXPECT_EQ(counter.value(), "abc");
    VariableAction(VariableAction::Kind::Set, &counter, "lit", nullptr).run(task);
    EXPECT_EQ(counter.value(), "lit");
    VariableAction(VariableAction::Kind::Reset, &counter, {}, nullptr).run(task);
    EXPECT_EQ(counter.value(), "-1");
}

TEST(Timers, FireAfterTheirDelayRepeatByPeriodAndASwitchedOffOneWaitsForItsStart) {
    ManualClock clock;
    MVTimer timer(1, "t", {}, {5, 0, false}, clock);
    QStringList seen;  // the status, then whether it fires
    for (const int ms : {0, 4999, 1, 60000}) {
        clock.advanceMs(ms);
        seen << timer.statusText();
        seen.last() += timer.fire() ? " 1" : " 0";
    }
    EXPECT_EQ(seen.join('|'), "剩余时间:5秒 0|剩余时间:0秒 0|待触发 1|已停止 0");

    MVTimer closed(1, "t", {}, {0, 0, true}, clock);
    EXPECT_EQ(closed.statusText(), "未启动");
    EXPECT_FALSE(closed.fire());
    closed.start();
    EXPECT_TRUE(closed.fire());
    closed.reset();
    EXPECT_FALSE(closed.running());

    // A task starts it with a variable action's reset.
    MVTimer switchedOff(2, "off", {}, {3, 0, true}, clock);
    TaskInfo task;
    VariableAction(VariableAction::Kind::Reset, &switchedOff, {}, nullptr).run(task);
    EXPECT_TRUE(switchedOff.running());
    EXPECT_FALSE(switchedOff.fire());
    clock.advanceMs(3000);
    EXPECT_TRUE(switchedOff.fire());

    // With a period it repeats; its value is "delay:period".
    MVTimer periodic(1, "t", {}, {1, 2, false}, clock);
    std::string fired;
    for (const int ms : {1000, 1999, 1}) {
        clock.advanceMs(ms);
        fired += periodic.fire() ? '1' : '0';
    }
    EXPECT_EQ(fired, "101");
    EXPECT_EQ(periodic.value(), "1:2");
    periodic.setValue("10");
    EXPECT_EQ(periodic.value(), "10:2");
    periodic.setDefaultValue("7");  // no colon: ignored; another thread sees the default
    QString seenElsewhere;
    std::thread([&] { seenElsewhere = periodic.value(); }).join();
    EXPECT_EQ(seenElsewhere, "1:2");
}

TEST(Alarms, FireOnceInsideTheirWindowRepeatingOnesRearmAndTheStatusTellsTheTimeLeft) {
    ManualClock late(QDateTime(QDate(2026, 1, 5), QTime(8, 6)));
    MVAlarm missed(1, "a", {}, {QTime(8, 0), 5, 0}, late);
    EXPECT_FALSE(missed.fire());
    EXPECT_EQ(missed.statusText(), "已超时");

    ManualClock clock(QDateTime(QDate(2026, 1, 5), QTime(8, 3)));
    MVAlarm alarm(1, "a", {}, {QTime(8, 0), 5, 0}, clock);
    EXPECT_TRUE(alarm.fire());
    EXPECT_FALSE(alarm.fire());
    EXPECT_EQ(alarm.statusText(), "已触发");

    MVAlarm repeating(1, "a", {}, {QTime(8, 3), 1, 1}, clock);
    EXPECT_TRUE(repeating.fire());
    clock.advanceMs(120000);
    EXPECT_FALSE(repeating.fire());  // re-armed
    EXPECT_FALSE(repeating.triggered());

    // The remaining time is told in minutes above 60 seconds.
    for (const auto& [now, text] : {std::pair{QTime(7, 59), "剩余:60秒"},
                                    {QTime(7, 58, 59), "剩余:1分钟"},
                                    {QTime(8, 2), "待触发"}}) {
        ManualClock clock(QDateTime(QDate(2026, 1, 5), now));
        EXPECT_EQ(MVAlarm(1, "a", {}, {QTime(8, 0), 5, 1}, clock).statusText(), text) << text;
    }
}

TEST(Randoms, DrawWithinTheirRangeAndTakeANewOne) {
    MVRandom random(1, "r", 9, 3);
    for (int i = 0; i < 50; ++i) {
        const int value = random.value().toInt();
        EXPECT_TRUE(value >= 3 && value <= 9) << value;
    }
    random.setValue("5~5");
    EXPECT_EQ(random.value(), "5");
    random.setValue("nonsense");
    EXPECT_EQ(random.value(), "5");
    random.reset();
    EXPECT_NE(random.value(), "");
}

}  // namespace

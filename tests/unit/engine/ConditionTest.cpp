// Groups, comparisons and screen items with their confirmation time.

#include <gtest/gtest.h>

#include <QJsonArray>

#include "ManualClock.h"
#include "ScriptedScreenItem.h"
#include "engine/BasicConditions.h"
#include "engine/ItemGroup.h"
#include "engine/MVVariable.h"
#include "engine/ScreenItem.h"

using namespace autoscene::engine;
using autoscene::test::ManualClock;
using autoscene::test::ScriptedScreenItem;

namespace {

// A condition with a fixed answer that counts its evaluations and resets.
class Scripted : public ICondition {
public:
    Scripted(int type, int relation, bool answer) : ICondition(type, relation), answer(answer) {}
    bool evaluate(TaskInfo&) override {
        ++evaluations;
        return setOutcome(answer);
    }
    void reset() override { ++resets; }
    bool answer;
    int evaluations = 0;
    int resets = 0;

protected:
    QString typeWord() const override { return QStringLiteral("var"); }
};

// A group of scripted members, each given as {relation, answer}.
struct Built {
    explicit Built(std::initializer_list<std::pair<int, bool>> given = {}) {
        for (const auto& [relation, answer] : given) {
            add(relation, answer);
        }
    }
    Scripted& add(int relation, bool answer, int type = 2) {
        auto item = std::make_unique<Scripted>(type, relation, answer);
        members.push_back(item.get());
        group->append(std::move(item));
        return *members.back();
    }

    std::unique_ptr<ItemGroup> group = std::make_unique<ItemGroup>();
    std::vector<Scripted*> members;
};

TEST(Groups, JoinLeftToRightAndShortCircuitLeavesSkippedMembersUntouched) {
    TaskInfo task;
    // true or false and false: false from left to right, true were "and" to bind first.
    Built f({{1, true}, {2, false}, {1, false}});
    EXPECT_FALSE(f.group->evaluate(task));
    EXPECT_EQ(f.group->itemState(std::this_thread::get_id()), ItemState::Fails);

    Built g({{1, true}, {2, false}});
    EXPECT_TRUE(g.group->evaluate(task));
    EXPECT_EQ(g.members[1]->evaluations, 0);
    EXPECT_EQ(g.members[1]->itemState(std::this_thread::get_id()), ItemState::NotEvaluated);

    // Relation 3 is neither and nor or: always evaluated, and-ed.
    Built h({{1, false}, {1, true}, {3, true}});
    EXPECT_FALSE(h.group->evaluate(task));
    EXPECT_EQ(std::pair(h.members[1]->evaluations, h.members[2]->evaluations), std::pair(0, 1));

    EXPECT_TRUE(ItemGroup().evaluate(task));  // empty
    EXPECT_EQ(g.group->describe(std::this_thread::get_id())["item_state"][0]["item_state"].toInt(),
              1);
}

TEST(Groups, ResetLeavesLabelsAndRunStateAlone) {
    Built g;
    for (int type : {1, 2, 3, 4, 5, 6, 7, 8, 9}) {
        g.add(1, true, type);
    }
    g.group->reset();
    std::vector<int> reset;
    for (Scripted* member : g.members) {
        reset.insert(reset.end(), member->resets, member->type());
    }
    EXPECT_EQ(reset, (std::vector<int>{1, 5, 6, 7}));
}

TEST(VariableComparisons, FollowTheirOperators) {
    // {operator, left, right, holds}
    const std::tuple<int, const char*, const char*, bool> cases[] = {
        {2, "abc", "1", false},  {2, " 5 ", "4.5", true},    {3, "-2", "1e1", true},
        {4, "a|b|c", "b", true}, {4, "a|b|c", "a|b", false}, {4, "a||c", "", true},
        {4, "abc", "bc", true},  {5, "abc", "x", true},      {0, "A", "a", false},
        {1, "A", "a", true},     {9, "a", "a", false},
    };
    for (const auto& [op, left, right, holds] : cases) {
        EXPECT_EQ(compareVariableText(op, left, right), holds) << op << ' ' << left << ' ' << right;
    }

    MVVariable left(1, "l", "5", {});
    MVVariable right(2, "r", "5", {});
    TaskInfo task;
    VariableCondition byVariable(1, &left, &right, "ignored", 0);
    EXPECT_TRUE(byVariable.evaluate(task));
    EXPECT_EQ(byVariable.describe(std::this_thread::get_id())["right"].toString(), "5");
    VariableCondition missing(1, nullptr, nullptr, "", 0);
    EXPECT_FALSE(missing.evaluate(task));
}

TEST(ScreenItems, ConfirmedTimeNeedsAnUnbrokenDetectionAndEmptyFramesFail) {
    ManualClock clock;
    int observed = kFound;
    int detections = 0;
    ScriptedScreenItem item({kFound, 2.0f, true}, clock, [&] { return observed; });
    TaskInfo task;
    task.frame = cv::Mat(2, 2, CV_8UC3);
    auto cycle = [&] {
        item.prepare(task);
        return item.evaluate(task);
    };
    // Exactly 2000 ms is not more than 2 s; once confirmed the next hold needs another 2 s.
    std::string held;
    for (const int ms : {0, 2000, 1, 1000, 1001, 1000}) {
        clock.advanceMs(ms);
        held += cycle() ? '1' : '0';
    }
    EXPECT_EQ(held, "001001");
    // A break starts the count again.
    observed = kNotFound;
    cycle();
    observed = kFound;
    clock.advanceMs(1500);
    EXPECT_FALSE(cycle());

    // Without confirmation time evaluate detects again; empty frames fail.
    ScriptedScreenItem absent({kNotFound, 0.0f, false}, clock, [&] {
        ++detections;
        return observed;
    });
    TaskInfo empty;
    EXPECT_FALSE(absent.evaluate(empty));
    EXPECT_EQ(detections, 0);
    observed = kNotFound;
    EXPECT_TRUE(absent.evaluate(task));
    observed = 0;
    EXPECT_FALSE(absent.evaluate(task));
    EXPECT_EQ(absent.describe(std::this_thread::get_id())["confirmed_time"].toDouble(), 0.0);
}

}  // namespace

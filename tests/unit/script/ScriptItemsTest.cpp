// The script condition and action on one worker.

#include "ScriptFixture.h"
#include "engine/MVVariable.h"
#include "model/EditorConditions.h"
#include "model/EditorScene.h"
#include "model/TaskDocument.h"
#include "script/JavaScriptCondition.h"
#include "script/MVJavaScriptAction.h"

using autoscene::engine::ItemState;
using autoscene::script::JavaScriptCondition;
using autoscene::script::MVJavaScriptAction;

namespace {

using ScriptItems = autoscene::test::ScriptFixture;

TEST_F(ScriptItems, ConditionHoldsOnExactlyTheTextTrue) {
    const std::pair<const char*, bool> cases[] = {
        {"'true'", true},        {"true", true},     {"n == '5'", true},       {"' true'", false},
        {"'True'", false},       {"'true '", false}, {"var t = true;", false}, {"false", false},
        {"throw 'true'", false}, {"1 +", false},     {"({})", false},
    };
    for (const auto& [code, holds] : cases) {
        SCOPED_TRACE(code);
        JavaScriptCondition condition(1, QString::fromUtf8(code), *context);
        EXPECT_EQ(condition.evaluate(worker), holds);
        EXPECT_EQ(condition.itemState(std::this_thread::get_id()),
                  holds ? ItemState::Holds : ItemState::Fails);
    }
    JavaScriptCondition condition(1, "'x'.repeat(5000)", *context);
    EXPECT_FALSE(condition.evaluate(worker));
    const QJsonObject status = condition.describe(std::this_thread::get_id());
    EXPECT_EQ(status["type"].toString(), "javascript");
    EXPECT_TRUE(status["result"].toString().endsWith("(5000 characters in all)"));
}

TEST_F(ScriptItems, ActionStoresTheWholeResultInItsVariable) {
    MVJavaScriptAction action("abc1 + '-' + 'y'.repeat(3000)", definitions->find(4), *context);
    EXPECT_EQ(action.run(worker), 0.0f);
    EXPECT_EQ(definitions->find(4)->value(), "7-" + QString(3000, 'y'));
    const QJsonObject record = action.state(std::this_thread::get_id());
    EXPECT_TRUE(record["result"].toString().startsWith("7-yyy"));
    EXPECT_LT(record["result"].toString().size(), 3000);
    EXPECT_TRUE(record["log"].toString().startsWith("n = 7-yyy"));
    EXPECT_EQ(record["exception"].toString(), "");

    MVJavaScriptAction failing("null.x", nullptr, *context);
    failing.run(worker);
    const QJsonObject failed = failing.state(std::this_thread::get_id());
    EXPECT_TRUE(failed["exception"].toString().startsWith("TypeError"))
        << failed["exception"].toString().toStdString();
    EXPECT_EQ(failed["result"], failed["exception"]);
    EXPECT_EQ(failed["variable"].toString(), "");
}

TEST_F(ScriptItems, ConditionReadsTheOtherKeyWhenJsCodeIsMissing) {
    open(autoscene::test::readFile(AUTOSCENE_FIXTURES "/script/other-key.json"));
    QStringList codes;
    for (const auto& item : task.scenes.front().events.front().conditions.items()) {
        codes << static_cast<const autoscene::model::EditorJavaScriptCondition&>(*item).jsCode;
    }
    EXPECT_EQ(codes, QStringList({"'other key'", "'js_code'"}));
    // Written back under the one key.
    const QByteArray saved = task.serialise();
    EXPECT_EQ(saved.count("\"js_code\""), 2);
    EXPECT_FALSE(saved.contains("\"javascript\""));
}

}  // namespace

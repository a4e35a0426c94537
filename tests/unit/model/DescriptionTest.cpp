// The texts of the event list, for every item of the fixture.

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/TaskDocument.h"

using namespace autoscene::model;
using namespace autoscene::test;

namespace {

class Descriptions : public ::testing::Test {
protected:
    void SetUp() override {
        openOrFail(task, readFile(fixturePath("tasks/every-record/script.json")));
        task.setLabelNames({QStringLiteral("敌人")});
    }

    TaskDocument task;
};

TEST_F(Descriptions, ConditionsAndActions) {
    QStringList texts;
    for (const IEditorItem* item : task.scenes[0].events[0].items()) {
        texts.push_back(item->describe(task));
    }
    EXPECT_EQ(texts.mid(0, 6).join(" | "),
              "图片开始按钮存在 | 变量数量大于3 | 计时(计时器) 或者 (当前时间为:08:30:00 并且 "
              "(JavaScript返回值为true)) | 屏幕文字包含确定的内容 | 颜色:红色多于100超过2秒 | "
              "标签敌人不存在");

    texts.clear();
    for (const EditorEvent& event : task.scenes[0].events) {
        for (const auto& action : event.actions) {
            texts.push_back(action->describe(task));
        }
    }
    EXPECT_EQ(texts.join(" | "),
              "鼠标左键点击位置<坐标> | 鼠标左键按下图片:开始按钮 | "
              "修改变量:数量的值自增 | 保存屏幕上的内容到变量文本 | "
              "保存图片:开始按钮的坐标到变量:坐标 | 输入文字:你好 world | "
              "滑动 | 重置所有变量 | 组合键:Ctrl+A | "
              "修改变量文本为JS的执行结果 | 模拟鼠标滚轮 | 延迟1~3秒 | "
              "点击屏幕上的文字:确定 | 启动应用:/usr/bin/xterm | "
              "鼠标右键键抬起 | 鼠标点击标签:敌人 | "
              "保存标签:敌人的坐标到变量:坐标 | 截图 | 点击颜色:红色 | "
              "停止任务");
}

TEST_F(Descriptions, MissingReferencesAndOddCodes) {
    // Without a model, label items show the label error.
    task.setLabelNames({});
    task.modelId.clear();
    EditorLabelCondition label;
    EXPECT_EQ(label.describe(task), QStringLiteral("标签异常，请检查模型或标签是否存在"));

    EditorClickColorAction gone;
    gone.colorId = 99;
    EXPECT_EQ(gone.describe(task), QStringLiteral("点击颜色<未知>"));

    EditorVariableCondition empty;
    empty.variableId = 8;
    empty.state = 9;  // outside the comparison table
    EXPECT_EQ(empty.describe(task), QStringLiteral("变量数量<空值>"));

    EditorKeyAction key;
    key.key = 0x0D;
    key.eventType = 1;
    EXPECT_EQ(key.describe(task), QStringLiteral("按下:Enter键"));
    key.eventType = 7;
    EXPECT_EQ(key.describe(task), QString());

    EditorScreenTextCondition startsWith;
    startsWith.textInfo.state = 6;
    startsWith.textInfo.isVariableValue = true;
    startsWith.textInfo.valueId = 7;
    EXPECT_EQ(startsWith.describe(task),
              QStringLiteral("屏幕文字开始字符等于:变量文本的内容的内容"));

    ColorRecord color;
    color.color = 0x12AB0F;
    EXPECT_EQ(color.displayText(), QStringLiteral("#12ab0f"));
}

}  // namespace

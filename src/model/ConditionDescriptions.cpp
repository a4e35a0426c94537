#include "model/Definitions.h"
#include "model/EditorConditions.h"

namespace autoscene::model {

QString DescribeContext::definitionName(int id) const {
    const EditorVariable* found = definition(id);
    return found ? found->name : QString();
}

namespace {

QString presence(int state) {
    return state == 1 ? QStringLiteral("存在") : QStringLiteral("不存在");
}

QString variableComparison(int state) {
    static const char* const kTexts[] = {"等于", "不等于", "大于", "小于", "包含", "不包含"};
    return state >= 0 && state < 6 ? QString::fromUtf8(kTexts[state]) : QString();
}

}  // namespace

// Shared with the click-text action.
QString textComparison(int state) {
    switch (TextCompare(state)) {
        case TextCompare::Equal:
            return QStringLiteral("等于");
        case TextCompare::NotEqual:
            return QStringLiteral("不等于");
        case TextCompare::Greater:
            return QStringLiteral("大于");
        case TextCompare::Less:
            return QStringLiteral("小于");
        case TextCompare::Contains:
            return QStringLiteral("包含");
        case TextCompare::StartsWith:
            return QStringLiteral("开始字符等于:");
        default:
            return {};
    }
}

// The region's comparison text, or "变量" and the variable's name.
QString textRegionValue(const TextRegion& region, const DescribeContext& context) {
    return region.isVariableValue
               ? QStringLiteral("变量") + context.definitionName(region.valueId) +
                     QStringLiteral("的内容")
               : region.value;
}

QString labelErrorText() {
    return QStringLiteral("标签异常，请检查模型或标签是否存在");
}

QString EditorImageCondition::describe(const DescribeContext& context) const {
    return QStringLiteral("图片") + context.imageName(imageId).value_or(QString()) +
           presence(state);
}

QString EditorVariableCondition::describe(const DescribeContext& context) const {
    QString value = isVariableCompare ? context.definitionName(compareId) : compareValue;
    if (value.isEmpty()) {
        value = QStringLiteral("<空值>");
    }
    return QStringLiteral("变量") + context.definitionName(variableId) + variableComparison(state) +
           value;
}

QString EditorTimerCondition::describe(const DescribeContext& context) const {
    return context.definitionName(variableId) + QStringLiteral("(计时器)");
}

QString EditorAlarmCondition::describe(const DescribeContext& context) const {
    const auto* alarm = dynamic_cast<const EditorAlarm*>(context.definition(variableId));
    return QStringLiteral("当前时间为:") + (alarm ? alarm->timeOfDay : QString());
}

QString EditorScreenTextCondition::describe(const DescribeContext& context) const {
    return QStringLiteral("屏幕文字") + textComparison(textInfo.state) +
           textRegionValue(textInfo, context) + QStringLiteral("的内容");
}

QString EditorColorCondition::describe(const DescribeContext& context) const {
    QString text = QStringLiteral("颜色:") + context.colorName(colorId).value_or(QString());
    switch (ColorTest(state)) {
        case ColorTest::Changes:
            text += QStringLiteral("变化");
            break;
        case ColorTest::Unchanged:
            text += QStringLiteral("不变化");
            break;
        case ColorTest::MoreThan:
            text += QStringLiteral("多于") + QString::number(count);
            break;
        case ColorTest::FewerThan:
            text += QStringLiteral("少于") + QString::number(count);
            break;
        default:
            break;
    }
    if (timeout > 0) {
        text += QStringLiteral("超过") + QString::number(timeout) + QStringLiteral("秒");
    }
    return text;
}

QString EditorLabelCondition::describe(const DescribeContext& context) const {
    const auto label = context.labelName(labelId);
    return label ? QStringLiteral("标签") + *label + presence(state) : labelErrorText();
}

QString EditorJavaScriptCondition::describe(const DescribeContext&) const {
    return QStringLiteral("JavaScript返回值为true");
}

}  // namespace autoscene::model

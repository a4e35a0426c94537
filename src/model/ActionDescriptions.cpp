#include "model/Definitions.h"
#include "model/EditorActions.h"
#include "model/KeyNames.h"

namespace autoscene::model {

// Defined with the condition descriptions.
QString textComparison(int state);
QString textRegionValue(const TextRegion& region, const DescribeContext& context);
QString labelErrorText();

ButtonText buttonText(int button) {
    switch (platform::mouseOpOf(button)) {
        case platform::MouseOp::LeftClick:
            return {QStringLiteral("鼠标左键"), QStringLiteral("点击")};
        case platform::MouseOp::RightClick:
            return {QStringLiteral("鼠标右键"), QStringLiteral("点击")};
        case platform::MouseOp::Move:
            return {QStringLiteral("鼠标"), QStringLiteral("移动到")};
        case platform::MouseOp::LeftDown:
            return {QStringLiteral("鼠标左键"), QStringLiteral("按下")};
        case platform::MouseOp::LeftUp:
            return {QStringLiteral("鼠标左键"), QStringLiteral("抬起")};
        case platform::MouseOp::RightDown:
            return {QStringLiteral("鼠标右键"), QStringLiteral("按下")};
        case platform::MouseOp::RightUp:
            return {QStringLiteral("鼠标右键"), QStringLiteral("抬起")};
        default:
            return {};
    }
}

QString EditorTapAction::describe(const DescribeContext& context) const {
    return buttonText(button).button + QStringLiteral("点击") + QStringLiteral("位置<") +
           context.definitionName(variableId) + QLatin1Char('>');
}

QString EditorImageAction::describe(const DescribeContext& context) const {
    const ButtonText text = buttonText(button);
    return text.button + text.verb + QStringLiteral("图片:") +
           context.imageName(imageId).value_or(QString());
}

QString EditorVariableAction::describe(const DescribeContext& context) const {
    const QString variable = context.definitionName(variableId);
    switch (VariableChange(changeType)) {
        case VariableChange::Plus:
            return QStringLiteral("修改变量:") + variable + QStringLiteral("的值自增");
        case VariableChange::Sub:
            return QStringLiteral("修改变量:") + variable + QStringLiteral("的值自减");
        case VariableChange::Reset:
            return QStringLiteral("重置变量") + variable;
        default:
            return QStringLiteral("修改变量:") + variable + QStringLiteral("的值");
    }
}

QString EditorScreenValueAction::describe(const DescribeContext& context) const {
    return QStringLiteral("保存屏幕上的内容到变量") + context.definitionName(variableId);
}

QString EditorSaveCoordAction::describe(const DescribeContext& context) const {
    return QStringLiteral("保存图片:") + context.imageName(imageId).value_or(QString()) +
           QStringLiteral("的坐标到变量:") + context.definitionName(variableId);
}

QString EditorInputAction::describe(const DescribeContext& context) const {
    if (variable > 0 && context.definition(variable)) {
        return QStringLiteral("输入变量") + context.definitionName(variable) +
               QStringLiteral("的内容");
    }
    return QStringLiteral("输入文字:") + text;
}

QString EditorSlideAction::describe(const DescribeContext&) const {
    return QStringLiteral("滑动");
}

QString EditorResetAllAction::describe(const DescribeContext&) const {
    return QStringLiteral("重置所有变量");
}

QString EditorStopAction::describe(const DescribeContext&) const {
    return QStringLiteral("停止任务");
}

QString EditorKeyAction::describe(const DescribeContext&) const {
    switch (KeyEvent(eventType)) {
        case KeyEvent::Click:
            return QStringLiteral("点击按键:") + virtualKeyName(key);
        case KeyEvent::Down:
            return QStringLiteral("按下:") + virtualKeyName(key) + QStringLiteral("键");
        case KeyEvent::Up:
            return QStringLiteral("抬起:") + virtualKeyName(key) + QStringLiteral("键");
        case KeyEvent::Group:
            return QStringLiteral("组合键:") + keyGroupText(groupKey);
        default:
            return {};
    }
}

QString EditorJavaScriptAction::describe(const DescribeContext& context) const {
    if (varId > 0 && context.definition(varId)) {
        return QStringLiteral("修改变量%1为JS的执行结果").arg(context.definitionName(varId));
    }
    return QStringLiteral("执行JS代码");
}

QString EditorMouseWheelAction::describe(const DescribeContext&) const {
    return QStringLiteral("模拟鼠标滚轮");
}

QString EditorDelayAction::describe(const DescribeContext&) const {
    return QStringLiteral("延迟%1~%2秒").arg(min).arg(max);
}

QString EditorClickTextAction::describe(const DescribeContext& context) const {
    return QStringLiteral("点击屏幕上的文字:") + textRegionValue(textInfo, context);
}

QString EditorStartAppAction::describe(const DescribeContext& context) const {
    const bool fromVariable = pathVariable > 0 && context.definition(pathVariable);
    return QStringLiteral("启动应用:") +
           (fromVariable ? context.definitionName(pathVariable) : appPath);
}

QString EditorMouseUpAction::describe(const DescribeContext&) const {
    // The doubled character of the right button's text is the established wording.
    const QString buttonName = button == int(platform::MouseOp::RightUp)
                                   ? QStringLiteral("鼠标右键键")
                                   : QStringLiteral("鼠标左键");
    return buttonName + QStringLiteral("抬起");
}

QString EditorLabelAction::describe(const DescribeContext& context) const {
    const auto label = context.labelName(labelId);
    return label
               ? QStringLiteral("鼠标") + buttonText(button).verb + QStringLiteral("标签:") + *label
               : labelErrorText();
}

QString EditorSaveLabelCoordAction::describe(const DescribeContext& context) const {
    const auto label = context.labelName(labelId);
    return label ? QStringLiteral("保存标签:") + *label + QStringLiteral("的坐标到变量:") +
                       context.definitionName(variableId)
                 : labelErrorText();
}

QString EditorPluginAction::describe(const DescribeContext&) const {
    return actionName;
}

QString EditorClickColorAction::describe(const DescribeContext& context) const {
    const auto color = context.colorName(colorId);
    return color ? QStringLiteral("点击颜色:") + *color : QStringLiteral("点击颜色<未知>");
}

QString EditorADBAppAction::describe(const DescribeContext& context) const {
    const bool fromVariable = varPackageName > 0 && context.definition(varPackageName);
    return QStringLiteral("启动安卓应用:") +
           (fromVariable ? context.definitionName(varPackageName) : packageName);
}

}  // namespace autoscene::model

#include "model/EditorActions.h"
#include "model/EditorConditions.h"

namespace autoscene::model {

namespace {

template <class Interface, class... Items>
std::unique_ptr<Interface> makeByType(int type) {
    std::unique_ptr<Interface> item;
    ((type == Items::kType ? (void)(item = std::make_unique<Items>()) : void()), ...);
    return item;
}

// The record's type, or nothing when it is not an object with an integer type.
std::optional<int> recordType(const JsonValue& record, ReadContext& context, const char* kind) {
    if (!record.IsObject()) {
        context.skip(QStringLiteral("%1 record is not a JSON object").arg(QLatin1String(kind)));
        return std::nullopt;
    }
    int type = 0;
    const JsonValue* value = findMember(record, "type");
    if (!value || !readJson(*value, type)) {
        context.skip(QStringLiteral("%1 record has no integer type").arg(QLatin1String(kind)));
        return std::nullopt;
    }
    return type;
}

}  // namespace

std::unique_ptr<IEditorCondition> createCondition(const JsonValue& record, ReadContext& context) {
    const auto type = recordType(record, context, "condition");
    if (!type) {
        return nullptr;
    }
    if (*type == EditorGroupCondition::kType && context.groupDepth >= kMaxGroupDepth) {
        context.skip(
            QStringLiteral("condition group nested deeper than %1 levels").arg(kMaxGroupDepth));
        return nullptr;
    }
    auto item = makeByType<IEditorCondition, EditorImageCondition, EditorVariableCondition,
                           EditorTimerCondition, EditorAlarmCondition, EditorGroupCondition,
                           EditorScreenTextCondition, EditorColorCondition, EditorLabelCondition,
                           EditorJavaScriptCondition>(*type);
    if (!item) {
        context.skip(QStringLiteral("unknown condition type %1").arg(*type));
        return nullptr;
    }
    ++context.groupDepth;
    item->read(record, context);
    --context.groupDepth;
    return item;
}

std::unique_ptr<IEditorAction> createAction(const JsonValue& record, ReadContext& context) {
    const auto type = recordType(record, context, "action");
    if (!type) {
        return nullptr;
    }
    // The Android application action (22) is written but deliberately not rebuilt.
    auto item = makeByType<IEditorAction, EditorTapAction, EditorImageAction, EditorVariableAction,
                           EditorScreenValueAction, EditorSaveCoordAction, EditorInputAction,
                           EditorSlideAction, EditorResetAllAction, EditorStopAction,
                           EditorKeyAction, EditorJavaScriptAction, EditorMouseWheelAction,
                           EditorDelayAction, EditorClickTextAction, EditorStartAppAction,
                           EditorMouseUpAction, EditorLabelAction, EditorSaveLabelCoordAction,
                           EditorPluginAction, EditorClickColorAction>(*type);
    if (!item) {
        context.skip(QStringLiteral("unknown action type %1").arg(*type));
        return nullptr;
    }
    item->read(record, context);
    return item;
}

}  // namespace autoscene::model

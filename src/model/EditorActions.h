#pragma once
// The action items of an event, one class per `type` code.

#include <memory>

#include "model/ActionRecords.h"
#include "model/EditorItem.h"

namespace autoscene::model {

#define AUTOSCENE_ACTION(Name, Code, Record)                             \
    class Name : public EditorAction<Name, Code, Record> {               \
    public:                                                              \
        QString describe(const DescribeContext& context) const override; \
    }

AUTOSCENE_ACTION(EditorTapAction, 1, TapActionRecord);
AUTOSCENE_ACTION(EditorImageAction, 2, ImageActionRecord);
AUTOSCENE_ACTION(EditorVariableAction, 3, VariableActionRecord);
AUTOSCENE_ACTION(EditorScreenValueAction, 4, ScreenValueActionRecord);
AUTOSCENE_ACTION(EditorSaveCoordAction, 5, SaveCoordActionRecord);
AUTOSCENE_ACTION(EditorInputAction, 6, InputActionRecord);
AUTOSCENE_ACTION(EditorSlideAction, 7, SlideActionRecord);
AUTOSCENE_ACTION(EditorResetAllAction, 9, ResetAllActionRecord);
AUTOSCENE_ACTION(EditorStopAction, 10, StopActionRecord);
AUTOSCENE_ACTION(EditorKeyAction, 11, KeyActionRecord);
AUTOSCENE_ACTION(EditorJavaScriptAction, 12, JavaScriptActionRecord);
AUTOSCENE_ACTION(EditorMouseWheelAction, 13, MouseWheelActionRecord);
AUTOSCENE_ACTION(EditorDelayAction, 14, DelayActionRecord);
AUTOSCENE_ACTION(EditorClickTextAction, 15, ClickTextActionRecord);
AUTOSCENE_ACTION(EditorStartAppAction, 16, StartAppActionRecord);
AUTOSCENE_ACTION(EditorMouseUpAction, 17, MouseUpActionRecord);
AUTOSCENE_ACTION(EditorLabelAction, 18, LabelActionRecord);
AUTOSCENE_ACTION(EditorSaveLabelCoordAction, 19, SaveLabelCoordActionRecord);
AUTOSCENE_ACTION(EditorPluginAction, 20, PluginActionRecord);
AUTOSCENE_ACTION(EditorClickColorAction, 21, ClickColorActionRecord);
// Written with its code but never rebuilt from a record: reopening a task drops it.
AUTOSCENE_ACTION(EditorADBAppAction, 22, AdbAppActionRecord);

#undef AUTOSCENE_ACTION

// Builds the action of a record's `type` (1 to 21, 8 excepted); nullptr (and a note
// in `context`) otherwise.
std::unique_ptr<IEditorAction> createAction(const JsonValue& record, ReadContext& context);

// The text shown for a mouse operation: the button and the verb ("鼠标左键", "点击").
struct ButtonText {
    QString button;
    QString verb;
};
ButtonText buttonText(int button);

}  // namespace autoscene::model

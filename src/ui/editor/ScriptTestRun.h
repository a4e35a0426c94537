#pragma once
// The code editors' test run: the code in the form's text box evaluated once on a fresh
// script engine with the task's variables at their initial values, the result shown in a
// box titled "测试结果".

class QPushButton;

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class FieldForm;

// A button ("测试") that runs the code of the form's js_code field.
QPushButton* scriptTestButton(FieldForm& form, const model::TaskDocument& task);

}  // namespace autoscene::ui

#include "editor/ScriptTestRun.h"

#include <QPlainTextEdit>
#include <QPushButton>

#include "editor/FieldForm.h"
#include "editor/Prompts.h"
#include "script/ScriptEngineHolder.h"

namespace autoscene::ui {

QPushButton* scriptTestButton(FieldForm& form, const model::TaskDocument& task) {
    auto* button = new QPushButton(FieldForm::tr("测试"));
    button->setObjectName(QStringLiteral("pushButton_test"));
    QObject::connect(button, &QPushButton::clicked, &form, [&form, &task] {
        const auto* code = qobject_cast<QPlainTextEdit*>(form.control(QStringLiteral("js_code")));
        if (!code) {
            return;
        }
        script::ScriptEngineHolder holder;
        holder.prepareEditor(task);
        const script::ScriptResult result = holder.evaluate(code->toPlainText());
        showNotice(&form, result.text, FieldForm::tr("测试结果"));
    });
    return button;
}

}  // namespace autoscene::ui

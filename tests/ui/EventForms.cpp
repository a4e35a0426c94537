#include "EventForms.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include "ModalAnswer.h"
#include "editor/EventEditor.h"
#include "editor/KeyCaptureEdit.h"

namespace autoscene::testing {

void fill(QWidget& dialog, const Fields& fields) {
    QWidget* scope = &dialog;
    if (auto* tabs = dialog.findChild<QTabWidget*>()) {
        scope = tabs->currentWidget();
    }
    for (const auto& [path, value] : fields) {
        SCOPED_TRACE(path.toStdString());
        auto* control = scope->findChild<QWidget*>(path);
        ASSERT_TRUE(control);
        if (auto* combo = qobject_cast<QComboBox*>(control)) {
            const int index = combo->findText(value, Qt::MatchStartsWith);
            ASSERT_GE(index, 0) << value.toStdString();
            combo->setCurrentIndex(index);
        } else if (auto* spin = qobject_cast<QSpinBox*>(control)) {
            spin->setValue(value.toInt());
        } else if (auto* real = qobject_cast<QDoubleSpinBox*>(control)) {
            real->setValue(value.toDouble());
        } else if (auto* keys = qobject_cast<ui::KeyCaptureEdit*>(control)) {
            QTest::keyClick(keys, Qt::Key(value.toInt()));
        } else if (auto* line = qobject_cast<QLineEdit*>(control)) {
            line->setText(value);
        } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
            button->setChecked(value == "1");
        } else {
            ADD_FAILURE() << "no way to set " << control->metaObject()->className();
        }
    }
}

void fillEvent(ui::EventEditor& dialog, const Event& event) {
    dialog.findChild<QLineEdit*>("lineEdit_event_name")->setText(event.name);
    const auto add = [&](const Item& item, void (ui::EventEditor::*adder)(int)) {
        const auto seen = answerModals([&] { (dialog.*adder)(item.type); },
                                       {{"确定", {}, [&](QWidget& w) { fill(w, item.fields); }}});
        EXPECT_TRUE(seen[0].shown) << item.type;
    };
    for (const Item& item : event.conditions) {
        add(item, &ui::EventEditor::addCondition);
    }
    for (const Item& item : event.actions) {
        add(item, &ui::EventEditor::addAction);
    }
}

}  // namespace autoscene::testing

#pragma once
// A dialog around a field form: OK keeps the dialog open and lists what is wrong until the
// values can be saved, then writes them into the record.

#include <QDialog>

class QLabel;

namespace autoscene::model {
class IEditorItem;
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class FieldForm;

class FormDialog : public QDialog {
    Q_OBJECT
public:
    FormDialog(FieldForm* form, const QString& title, QWidget* parent = nullptr);

    FieldForm& form() { return *form_; }
    // The problems shown after the last OK.
    QString shownProblems() const;

    void accept() override;

private:
    FieldForm* form_;
    QLabel* problems_;
};

// Opens the form of a condition or action; true when the user accepted it and the item
// holds the new values.
bool editItem(QWidget* parent, const model::TaskDocument& task, model::IEditorItem& item);

}  // namespace autoscene::ui

#pragma once
// The form of a plug-in action: the plug-in (from the task's list) and one of its actions,
// then a row per input (a value or a variable), per choice (one of its allowed values) and
// per result (the variable that receives it), as the plug-in's description lists them.
// The record is written only when the user changed something, so an item opened and
// accepted unchanged keeps its exact text.

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

#include "editor/TaskPlugins.h"
#include "model/EditorActions.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace autoscene::ui {

class PluginActionForm : public QWidget {
    Q_OBJECT
public:
    PluginActionForm(const model::TaskDocument& task, model::EditorPluginAction& record,
                     QWidget* parent = nullptr);

    void apply();
    // Empty when the record can be kept.
    QString problem() const;

private:
    struct Input {
        QString name;
        QComboBox* source;  // "值" (the text typed) or a variable
        QLineEdit* literal;
    };
    struct Choice {
        QString name;
        QStringList allowed;
        QComboBox* chosen;
    };
    struct Output {
        QString name;
        QComboBox* variable;
    };

    void showPlugin(int index);
    void showAction(int index);
    const model::PluginActionDescription* chosenAction() const;
    QComboBox* variableCombo(bool withLiteral, int selected);
    void markChanged() { changed_ = true; }

    const model::TaskDocument& task_;
    model::EditorPluginAction& record_;
    std::vector<TaskPlugin> plugins_;
    QComboBox* plugin_;
    QComboBox* action_;
    QLabel* status_;
    QFormLayout* rows_;
    std::vector<Input> inputs_;
    std::vector<Choice> choices_;
    std::vector<Output> outputs_;
    bool changed_ = false;
};

}  // namespace autoscene::ui

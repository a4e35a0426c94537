#pragma once
// The kinds of condition, action and definition the editor offers: their names, a new item
// of each with the record's defaults, and the form of each (the generic field form plus
// what the kind needs beyond it).

#include <QString>
#include <memory>
#include <vector>

#include "model/Definitions.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class FieldForm;

struct ItemKind {
    int type = 0;
    QString name;
};

// In menu order; the group is added by its own command.
std::vector<ItemKind> conditionKinds();
// Code 22 is left out: the task file cannot bring it back.
std::vector<ItemKind> actionKinds();
// The five kinds of the definition dialog, in tab order.
std::vector<ItemKind> definitionKinds();
// The name of a kind, or the code when it is not offered.
QString conditionKindName(int type);
QString actionKindName(int type);

// Nothing for a code that is not offered.
std::unique_ptr<model::IEditorCondition> newCondition(int type);
std::unique_ptr<model::IEditorAction> newAction(int type);
// With id 0: the id is taken when the definition is added.
std::unique_ptr<model::EditorVariable> newDefinition(int type);

// The title of an item's form: the kind's name, or the code editors' title.
QString itemFormTitle(const model::IEditorItem& item);

// Adds the item's fields to `form`, bound to the item; the script kinds get their test run.
void addItemFields(FieldForm& form, model::IEditorItem& item, const model::TaskDocument& task);
// Adds the definition's fields to `form`, bound to it, with the checks of its kind: the
// name rules and, for a crop, a rectangle on the task's screen.
void addDefinitionFields(FieldForm& form, model::EditorVariable& definition,
                         const model::TaskDocument& task);

}  // namespace autoscene::ui

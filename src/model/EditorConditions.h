#pragma once
// The condition items of an event, one class per `type` code.

#include <memory>
#include <vector>

#include "model/ConditionRecords.h"
#include "model/EditorItem.h"

namespace autoscene::model {

#define AUTOSCENE_CONDITION(Name, Code, Record)                          \
    class Name : public EditorCondition<Name, Code, Record> {            \
    public:                                                              \
        QString describe(const DescribeContext& context) const override; \
    }

AUTOSCENE_CONDITION(EditorImageCondition, 1, ImageConditionRecord);
AUTOSCENE_CONDITION(EditorVariableCondition, 2, VariableConditionRecord);
AUTOSCENE_CONDITION(EditorTimerCondition, 3, DefinitionConditionRecord);
AUTOSCENE_CONDITION(EditorAlarmCondition, 4, DefinitionConditionRecord);
AUTOSCENE_CONDITION(EditorScreenTextCondition, 6, ScreenTextConditionRecord);
AUTOSCENE_CONDITION(EditorColorCondition, 7, ColorConditionRecord);
AUTOSCENE_CONDITION(EditorLabelCondition, 8, LabelConditionRecord);
AUTOSCENE_CONDITION(EditorJavaScriptCondition, 9, JavaScriptConditionRecord);

#undef AUTOSCENE_CONDITION

// A group of conditions joined left to right by each member's relation; members may
// be groups again. An event's conditions are one group.
class EditorGroupCondition : public IEditorCondition {
public:
    static constexpr int kType = 5;

    EditorGroupCondition() = default;
    EditorGroupCondition(const EditorGroupCondition& other);
    EditorGroupCondition& operator=(const EditorGroupCondition& other);

    int type() const override { return kType; }
    int relation() const override { return relation_; }
    void setRelation(int relation) { relation_ = relation; }
    int id() const { return id_; }
    void setId(int id) { id_ = id; }

    const std::vector<std::unique_ptr<IEditorCondition>>& items() const { return items_; }
    void append(std::unique_ptr<IEditorCondition> item) { items_.push_back(std::move(item)); }
    std::unique_ptr<IEditorCondition> take(size_t index);
    bool empty() const { return items_.empty(); }

    void read(const JsonValue& record, ReadContext& context) override;
    void write(JsonWriter& out) const override;
    QString describe(const DescribeContext& context) const override;
    bool uses(Ref kind, int id) const override;
    void replace(Ref kind, int fromId, int toId) override;
    std::unique_ptr<IEditorCondition> clone() const override;

private:
    int relation_ = int(Relation::And);
    int id_ = 0;
    std::vector<std::unique_ptr<IEditorCondition>> items_;
};

// Builds the condition of a record's `type`; nullptr (and a note in `context`) for
// an unknown type or a record that is not an object.
std::unique_ptr<IEditorCondition> createCondition(const JsonValue& record, ReadContext& context);

}  // namespace autoscene::model

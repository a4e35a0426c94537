#pragma once
// Interfaces of the items that make up events (conditions and actions), and the
// one template that gives every item its type code, reading, writing, cloning and
// resource-use queries from its field table.

#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "model/Fields.h"

namespace autoscene::model {

class EditorVariable;

// Names of what items refer to by id, for their descriptions.
class DescribeContext {
public:
    virtual ~DescribeContext() = default;
    virtual const EditorVariable* definition(int id) const = 0;
    virtual std::optional<QString> imageName(int id) const = 0;
    virtual std::optional<QString> colorName(int id) const = 0;
    // Empty when the task has no model or the model has no such label.
    virtual std::optional<QString> labelName(int id) const = 0;

    // The definition's name, or "" when it is gone.
    QString definitionName(int id) const;
};

// Which definitions and resources an item uses, and moving it to another id.
class IResourceUseage {
public:
    virtual ~IResourceUseage() = default;
    virtual bool uses(Ref kind, int id) const = 0;
    virtual void replace(Ref kind, int fromId, int toId) = 0;
    // Calls `visit` with every id this holds and what kind of thing it names.
    virtual void forEachReference(const std::function<void(Ref, int)>& /*visit*/) const {}

    bool usesDefinition(int id) const { return uses(Ref::Definition, id); }
};

class IEditorItem : public IResourceUseage {
public:
    virtual int type() const = 0;
    virtual void read(const JsonValue& record, ReadContext& context) = 0;
    // Writes the whole record, `type` first.
    virtual void write(JsonWriter& out) const = 0;
    // The text shown in the event list.
    virtual QString describe(const DescribeContext& context) const = 0;
};

class IEditorCondition : public IEditorItem {
public:
    virtual int relation() const = 0;
    virtual std::unique_ptr<IEditorCondition> clone() const = 0;
};

class IEditorAction : public IEditorItem {
public:
    virtual std::unique_ptr<IEditorAction> clone() const = 0;
};

template <class Interface, class Derived, int Code, class Record>
class EditorItem : public Interface, public Record {
public:
    static constexpr int kType = Code;

    int type() const override { return Code; }

    void read(const JsonValue& record, ReadContext& context) override {
        readFields(record, static_cast<Record&>(*this));
        reportUnknownFieldKeys<Record>(record, context, true);
    }

    void write(JsonWriter& out) const override {
        out.startObject();
        out.member("type", Code);
        writeFields(out, static_cast<const Record&>(*this));
        out.endObject();
    }

    bool uses(Ref kind, int id) const override {
        bool found = false;
        forEachRef(static_cast<const Record&>(*this), [&](Ref ref, const int& value) {
            found = found || (ref == kind && value == id);
        });
        return found;
    }

    void forEachReference(const std::function<void(Ref, int)>& visit) const override {
        forEachRef(static_cast<const Record&>(*this),
                   [&](Ref ref, const int& value) { visit(ref, value); });
    }

    void replace(Ref kind, int fromId, int toId) override {
        forEachRef(static_cast<Record&>(*this), [&](Ref ref, int& value) {
            if (ref == kind && value == fromId) {
                value = toId;
            }
        });
    }

    std::unique_ptr<Interface> clone() const override {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }
};

template <class Derived, int Code, class Record>
class EditorCondition : public EditorItem<IEditorCondition, Derived, Code, Record> {
public:
    int relation() const override { return this->Record::relation; }
};

template <class Derived, int Code, class Record>
using EditorAction = EditorItem<IEditorAction, Derived, Code, Record>;

}  // namespace autoscene::model

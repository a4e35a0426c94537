#include "model/EditorConditions.h"

namespace autoscene::model {

EditorGroupCondition::EditorGroupCondition(const EditorGroupCondition& other)
    : relation_(other.relation_), id_(other.id_) {
    items_.reserve(other.items_.size());
    for (const auto& item : other.items_) {
        items_.push_back(item->clone());
    }
}

EditorGroupCondition& EditorGroupCondition::operator=(const EditorGroupCondition& other) {
    if (this != &other) {
        EditorGroupCondition copy(other);
        relation_ = copy.relation_;
        id_ = copy.id_;
        items_ = std::move(copy.items_);
    }
    return *this;
}

std::unique_ptr<IEditorCondition> EditorGroupCondition::take(size_t index) {
    if (index >= items_.size()) {
        return nullptr;
    }
    auto item = std::move(items_[index]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    return item;
}

void EditorGroupCondition::read(const JsonValue& record, ReadContext& context) {
    reportUnknownKeys(record, {"type", "id", "relation", "item_list"}, context);
    readMember(record, "id", id_);
    readMember(record, "relation", relation_);
    items_.clear();
    const JsonValue* list = findMember(record, "item_list");
    if (!list || !list->IsArray()) {
        return;
    }
    ReadContext::Scope scope(context, QStringLiteral("item_list"));
    for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
        ReadContext::Scope element(context, QString::number(i));
        if (auto item = createCondition((*list)[i], context)) {
            items_.push_back(std::move(item));
        }
    }
}

void EditorGroupCondition::write(JsonWriter& out) const {
    out.startObject();
    out.member("type", kType);
    out.member("relation", relation_);
    out.member("id", id_);
    out.key("item_list");
    out.startArray();
    for (const auto& item : items_) {
        item->write(out);
    }
    out.endArray();
    out.endObject();
}

QString EditorGroupCondition::describe(const DescribeContext& context) const {
    QString text;
    for (size_t i = 0; i < items_.size(); ++i) {
        if (i > 0) {
            text += items_[i]->relation() == int(Relation::Or) ? QStringLiteral(" 或者 ")
                                                               : QStringLiteral(" 并且 ");
        }
        const bool nested = items_[i]->type() == kType;
        const QString member = items_[i]->describe(context);
        text += nested ? QLatin1Char('(') + member + QLatin1Char(')') : member;
    }
    return text;
}

bool EditorGroupCondition::uses(Ref kind, int id) const {
    for (const auto& item : items_) {
        if (item->uses(kind, id)) {
            return true;
        }
    }
    return false;
}

void EditorGroupCondition::replace(Ref kind, int fromId, int toId) {
    for (auto& item : items_) {
        item->replace(kind, fromId, toId);
    }
}

std::unique_ptr<IEditorCondition> EditorGroupCondition::clone() const {
    return std::make_unique<EditorGroupCondition>(*this);
}

}  // namespace autoscene::model

#include "model/Definitions.h"

#include <algorithm>
#include <atomic>

namespace autoscene::model {

namespace definition_ids {

namespace {
std::atomic<int> counter{0};
}

int next() {
    return ++counter;
}
int current() {
    return counter.load();
}

void raiseTo(int id) {
    int seen = counter.load();
    while (id > seen && !counter.compare_exchange_weak(seen, id)) {
    }
}

void reset() {
    counter = 0;
}

}  // namespace definition_ids

void EditorVariable::read(const JsonValue& record) {
    readFields(record, *this);
}

void EditorVariable::write(JsonWriter& out) const {
    out.startObject();
    out.member("type", kType);
    writeFields(out, *this);
    out.endObject();
}

std::unique_ptr<EditorVariable> EditorVariable::clone() const {
    return std::make_unique<EditorVariable>(*this);
}

void CropInfo::replace(Ref kind, int fromId, int toId) {
    if (kind == Ref::Original && ori == fromId) {
        ori = toId;
    }
}

namespace {

// Timers, alarms and randoms are built as new definitions, which takes an id from
// the counter, before the record's id replaces it; variables and crops are not.
template <class T>
std::unique_ptr<EditorVariable> fromRecord(const JsonValue& record, bool countsAsNew,
                                           ReadContext& context) {
    std::unique_ptr<EditorVariable> definition =
        countsAsNew ? EditorVariable::create<T>() : std::make_unique<T>();
    definition->read(record);
    reportUnknownFieldKeys<T>(record, context, true);
    return definition;
}

}  // namespace

std::unique_ptr<EditorVariable> createDefinition(const JsonValue& record, ReadContext& context) {
    int type = 0;
    const JsonValue* typeValue = findMember(record, "type");
    if (!record.IsObject() || !typeValue || !readJson(*typeValue, type)) {
        context.skip(QStringLiteral("definition record has no integer type"));
        return nullptr;
    }
    std::unique_ptr<EditorVariable> definition;
    switch (DefinitionType(type)) {
        case DefinitionType::Variable:
            definition = fromRecord<EditorVariable>(record, false, context);
            break;
        case DefinitionType::Crop:
            definition = fromRecord<CropInfo>(record, false, context);
            break;
        case DefinitionType::Timer:
            definition = fromRecord<EditorTimer>(record, true, context);
            break;
        case DefinitionType::Alarm:
            definition = fromRecord<EditorAlarm>(record, true, context);
            break;
        case DefinitionType::Random:
            definition = fromRecord<EditorRandom>(record, true, context);
            break;
        default:
            context.skip(QStringLiteral("unknown definition type %1").arg(type));
            return nullptr;
    }
    definition_ids::raiseTo(definition->id);
    return definition;
}

}  // namespace autoscene::model

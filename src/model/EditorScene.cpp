#include "model/EditorScene.h"

namespace autoscene::model {

EditorEvent::EditorEvent(const EditorEvent& other)
    : name(other.name), id(other.id), disabled(other.disabled), conditions(other.conditions) {
    actions.reserve(other.actions.size());
    for (const auto& action : other.actions) {
        actions.push_back(action->clone());
    }
}

EditorEvent& EditorEvent::operator=(const EditorEvent& other) {
    if (this != &other) {
        EditorEvent copy(other);
        *this = std::move(copy);
    }
    return *this;
}

void EditorEvent::read(const JsonValue& record, ReadContext& context) {
    reportUnknownKeys(record, {"name", "id", "disabled", "item_group", "action_list"}, context);
    readMember(record, "name", name);
    readMember(record, "id", id);
    readMember(record, "disabled", disabled);
    if (const JsonValue* group = findMember(record, "item_group"); group && group->IsObject()) {
        ReadContext::Scope scope(context, QStringLiteral("item_group"));
        ++context.groupDepth;
        conditions.read(*group, context);
        --context.groupDepth;
    }
    actions.clear();
    const JsonValue* list = findMember(record, "action_list");
    if (!list || !list->IsArray()) {
        return;
    }
    ReadContext::Scope scope(context, QStringLiteral("action_list"));
    for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
        ReadContext::Scope element(context, QString::number(i));
        if (auto action = createAction((*list)[i], context)) {
            actions.push_back(std::move(action));
        }
    }
}

void EditorEvent::write(JsonWriter& out) const {
    out.startObject();
    out.member("name", name);
    out.member("id", id);
    out.member("disabled", disabled);
    out.key("item_group");
    conditions.write(out);
    out.key("action_list");
    out.startArray();
    for (const auto& action : actions) {
        action->write(out);
    }
    out.endArray();
    out.endObject();
}

std::vector<const IEditorItem*> EditorEvent::items() const {
    std::vector<const IEditorItem*> all;
    for (const auto& condition : conditions.items()) {
        all.push_back(condition.get());
    }
    for (const auto& action : actions) {
        all.push_back(action.get());
    }
    return all;
}

bool EditorEvent::uses(Ref kind, int id) const {
    for (const IEditorItem* item : items()) {
        if (item->uses(kind, id)) {
            return true;
        }
    }
    return false;
}

std::vector<const EditorEvent*> EditorScene::allEvents() const {
    std::vector<const EditorEvent*> all{&sceneEvent};
    for (const EditorEvent& event : events) {
        all.push_back(&event);
    }
    return all;
}

std::vector<EditorEvent*> EditorScene::allEvents() {
    std::vector<EditorEvent*> all{&sceneEvent};
    for (EditorEvent& event : events) {
        all.push_back(&event);
    }
    return all;
}

void EditorScene::read(const JsonValue& record, ReadContext& context) {
    reportUnknownKeys(record, {"name", "scene_event", "event_list"}, context);
    readMember(record, "name", name);
    if (const JsonValue* event = findMember(record, "scene_event"); event && event->IsObject()) {
        ReadContext::Scope scope(context, QStringLiteral("scene_event"));
        sceneEvent.read(*event, context);
    }
    events.clear();
    const JsonValue* list = findMember(record, "event_list");
    if (!list || !list->IsArray()) {
        return;
    }
    ReadContext::Scope scope(context, QStringLiteral("event_list"));
    for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
        ReadContext::Scope element(context, QString::number(i));
        if (!(*list)[i].IsObject()) {
            context.skip(QStringLiteral("event record is not a JSON object"));
            continue;
        }
        events.emplace_back().read((*list)[i], context);
    }
}

void EditorScene::write(JsonWriter& out) const {
    out.startObject();
    out.member("name", name);
    out.key("scene_event");
    sceneEvent.write(out);
    out.key("event_list");
    out.startArray();
    for (const EditorEvent& event : events) {
        event.write(out);
    }
    out.endArray();
    out.endObject();
}

}  // namespace autoscene::model

#pragma once
// Scenes and their events as the task file holds them.

#include <QString>
#include <memory>
#include <vector>

#include "model/EditorActions.h"
#include "model/EditorConditions.h"

namespace autoscene::model {

class EditorEvent {
public:
    EditorEvent() = default;
    explicit EditorEvent(QString name) : name(std::move(name)) {}
    EditorEvent(const EditorEvent& other);
    EditorEvent& operator=(const EditorEvent& other);
    EditorEvent(EditorEvent&&) noexcept = default;
    EditorEvent& operator=(EditorEvent&&) noexcept = default;

    void read(const JsonValue& record, ReadContext& context);
    void write(JsonWriter& out) const;
    // Conditions first, then actions, in order.
    std::vector<const IEditorItem*> items() const;
    bool uses(Ref kind, int id) const;

    QString name;
    int id = 0;
    bool disabled = false;
    EditorGroupCondition conditions;
    std::vector<std::unique_ptr<IEditorAction>> actions;
};

class EditorScene {
public:
    static QString identificationEventName() { return QStringLiteral("界面标识"); }

    EditorScene() = default;
    explicit EditorScene(QString name) : name(std::move(name)) {}

    void read(const JsonValue& record, ReadContext& context);
    void write(JsonWriter& out) const;

    // The identification event followed by the scene's events.
    std::vector<const EditorEvent*> allEvents() const;
    std::vector<EditorEvent*> allEvents();

    QString name;
    EditorEvent sceneEvent{identificationEventName()};
    std::vector<EditorEvent> events;
};

}  // namespace autoscene::model

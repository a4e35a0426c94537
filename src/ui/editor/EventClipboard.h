#pragma once
// Events travel through the clipboard as task JSON: the copied events in the default scene
// of an otherwise empty task, with the definitions they use, so that they can be pasted
// into another scene, another task or a text editor.

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "model/TaskDocument.h"

namespace autoscene::ui {

QByteArray eventsToTaskJson(const model::TaskDocument& from,
                            const std::vector<const model::EditorEvent*>& events);

struct PastedEvents {
    std::vector<model::EditorEvent> events;
    // Definitions the events use that the target task lacks, to be added with them.
    std::vector<std::unique_ptr<model::EditorVariable>> definitions;
    QString error;  // why nothing can be pasted
};

// The events of every scene of the task JSON, in order, numbered from `firstEventId`. A
// definition they use is the target's definition of the same name and kind when there is
// one; otherwise it is added, with a fresh id when its own is taken.
PastedEvents eventsFromTaskJson(const QByteArray& json, const model::TaskDocument& into,
                                int firstEventId);

}  // namespace autoscene::ui

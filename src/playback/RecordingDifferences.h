#pragma once
// What decides differently in a replayed cycle than in its recording.

#include <QJsonArray>
#include <QJsonObject>

namespace autoscene::playback {

// The differences between two cycle records (CycleLog's lines), each one of
//   {"kind": "scene", "old": name or null, "new": name or null}
//   {"kind": "condition", "scene", "identification" or "event": name,
//    "old": {"holds", "conditions"} or null, "new": the same or null}  (null: not evaluated)
//   {"kind": "event", "scene", "event" (or "entered": true), "fired_before", "fires_now"}
// Evidence that changed while the outcome stayed is no difference.
QJsonArray cycleDifferences(const QJsonObject& recorded, const QJsonObject& replayed);

}  // namespace autoscene::playback

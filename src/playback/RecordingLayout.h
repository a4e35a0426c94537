#pragma once
// What a recording folder holds.
//
//   cycles.jsonl  a header line {"type": "recording", "version": 1, "started_ms"}, then one
//                 line per cycle and target (CycleLog's record with "type": "cycle" and
//                 "frame": the PNG under frames/, or null when there was none or it was
//                 dropped, then also "frame_dropped": true); a cycle that repeats its
//                 target's last fully written one in all but cycle and time is written as
//                 {"type": "cycle", "target", "cycle", "time_ms", "same_as": that cycle}
//   frames/       T-C.png: target T's frame of its cycle C, stored when it differs from
//                 that target's previous frame
//   task/         script.json, image/ and ori/ of the task as it ran

#include <QString>

namespace autoscene::playback {

inline const QString kCyclesFile = QStringLiteral("cycles.jsonl");
inline const QString kFramesFolder = QStringLiteral("frames");
inline const QString kTaskFolder = QStringLiteral("task");
constexpr int kRecordingVersion = 1;

}  // namespace autoscene::playback

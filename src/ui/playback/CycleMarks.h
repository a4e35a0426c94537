#pragma once
// A recording's cycles per target with what the timeline marks on each (a scene change, an
// event fired, a different decision after an edit) and the moves between them.

#include <QSet>
#include <optional>
#include <vector>

#include "playback/RecordingReader.h"

namespace autoscene::ui {

class CycleMarks {
public:
    enum Mark : unsigned { kSceneChange = 1, kFired = 2, kDiffers = 4 };

    struct Position {
        int target = 0;  // index into targets(), not the recorded number
        int index = 0;   // the cycle's place among its target's

        bool operator==(const Position&) const = default;
    };

    // The recording must outlive the marks.
    explicit CycleMarks(const playback::Recording& recording);

    // Recorded target numbers, ascending.
    const std::vector<int>& targets() const { return targetNumbers_; }
    int cycleCount(int target) const { return int(cycles_[size_t(target)].size()); }
    const playback::RecordedCycle& cycle(Position at) const;
    unsigned marks(Position at) const;

    // The cycles that decide differently now, as recorded cycle lines; replaces the last set.
    void setDiffering(const QSet<int>& lineNumbers);

    // `at` moved by `step` cycles within its target; nothing past either end.
    std::optional<Position> step(Position at, int step) const;
    // The nearest cycle after (`forward`) or before `at` of its target carrying `mark`.
    std::optional<Position> jump(Position at, Mark mark, bool forward) const;

private:
    std::vector<int> targetNumbers_;
    std::vector<std::vector<const playback::RecordedCycle*>> cycles_;
    std::vector<std::vector<unsigned>> marks_;
};

}  // namespace autoscene::ui

#include "ui/playback/CycleMarks.h"

#include <QJsonArray>
#include <algorithm>
#include <map>

namespace autoscene::ui {

CycleMarks::CycleMarks(const playback::Recording& recording) {
    std::map<int, std::vector<const playback::RecordedCycle*>> byTarget;
    for (const playback::RecordedCycle& cycle : recording.cycles) {
        byTarget[cycle.target].push_back(&cycle);
    }
    for (auto& [number, cycles] : byTarget) {
        std::vector<unsigned> marks(cycles.size(), 0);
        for (size_t i = 0; i < cycles.size(); ++i) {
            const QJsonObject& line = cycles[i]->line;
            // The first cycle enters its scene from none.
            const QJsonValue before = i > 0 ? cycles[i - 1]->line["scene"] : QJsonValue();
            if (line["scene"] != before) {
                marks[i] |= kSceneChange;
            }
            const QJsonArray fired = line["fired"].toArray();
            if (std::any_of(fired.begin(), fired.end(),
                            [](const QJsonValue& f) { return f.toObject().contains("event"); })) {
                marks[i] |= kFired;
            }
        }
        targetNumbers_.push_back(number);
        cycles_.push_back(std::move(cycles));
        marks_.push_back(std::move(marks));
    }
}

const playback::RecordedCycle& CycleMarks::cycle(Position at) const {
    return *cycles_[size_t(at.target)][size_t(at.index)];
}

unsigned CycleMarks::marks(Position at) const {
    return marks_[size_t(at.target)][size_t(at.index)];
}

void CycleMarks::setDiffering(const QSet<int>& lineNumbers) {
    for (size_t target = 0; target < cycles_.size(); ++target) {
        for (size_t i = 0; i < cycles_[target].size(); ++i) {
            unsigned& marks = marks_[target][i];
            marks = lineNumbers.contains(cycles_[target][i]->lineNumber) ? marks | kDiffers
                                                                         : marks & ~kDiffers;
        }
    }
}

std::optional<CycleMarks::Position> CycleMarks::step(Position at, int step) const {
    const int index = at.index + step;
    if (index < 0 || index >= cycleCount(at.target)) {
        return std::nullopt;
    }
    return Position{at.target, index};
}

std::optional<CycleMarks::Position> CycleMarks::jump(Position at, Mark mark, bool forward) const {
    const std::vector<unsigned>& marks = marks_[size_t(at.target)];
    for (int i = at.index + (forward ? 1 : -1); i >= 0 && i < int(marks.size());
         i += forward ? 1 : -1) {
        if (marks[size_t(i)] & mark) {
            return Position{at.target, i};
        }
    }
    return std::nullopt;
}

}  // namespace autoscene::ui

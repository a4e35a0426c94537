#pragma once
// Holds when a label of the task's model is (or is not) found on the screen.

#include "LabelSearch.h"
#include "ScreenItem.h"
#include "SearchArea.h"

namespace autoscene::engine {

class LabelCondition : public ScreenItem {
public:
    static constexpr int kType = 8;

    // `detector` may be null (no model): nothing is ever found.
    LabelCondition(int relation, Settings settings, const RunClock& clock, ILabelDetector* detector,
                   int labelId, float minProbability, SearchArea searchArea);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    LabelFind result(std::thread::id thread) const;

protected:
    QString typeWord() const override { return QStringLiteral("label"); }
    int detect(TaskInfo& task) override;

private:
    ILabelDetector* const detector_;
    const int labelId_;
    const float minProbability_;
    const SearchArea searchArea_;
    PerThread<LabelFind> results_;
};

}  // namespace autoscene::engine

#pragma once
// Holds when a label of the task's model is (or is not) found on the screen.

#include "conditions/LabelSearch.h"
#include "engine/ScreenItem.h"
#include "engine/SearchArea.h"

namespace autoscene::conditions {

class LabelCondition : public engine::ScreenItem {
public:
    static constexpr int kType = 8;

    // `detector` may be null (no model): nothing is ever found.
    LabelCondition(int relation, Settings settings, const engine::RunClock& clock,
                   recognition::ILabelDetector* detector, int labelId, float minProbability,
                   engine::SearchArea searchArea);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    LabelFind result(std::thread::id thread) const;

protected:
    QString typeWord() const override { return QStringLiteral("label"); }
    int detect(engine::TaskInfo& task) override;

private:
    recognition::ILabelDetector* const detector_;
    const int labelId_;
    const float minProbability_;
    const engine::SearchArea searchArea_;
    sys::PerThread<LabelFind> results_;
};

}  // namespace autoscene::conditions

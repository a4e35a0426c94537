#pragma once
// Conditions that look at the screen (image, colour, label, text). Each detects
// once per cycle before the traversal; a confirmed time makes the condition hold
// only once its detection has held without a break for that long.

#include <cstdint>

#include "engine/ICondition.h"
#include "system/PerThread.h"

namespace autoscene::engine {

class RunClock;

// Observed state bits of a detection; 0 is no observation and never holds.
enum ObservedState : int {
    kFound = 1,
    kNotFound = 2,
    kChanged = 4,
    kUnchanged = 8,
    kMoreThan = 256,
    kNotMoreThan = 512,
};

class ScreenItem : public ICondition {
public:
    struct Settings {
        int expectedState = kFound;  // bit mask of the states in which it holds
        float confirmedSeconds = 0.0f;
        bool resetWhenConfirmed = false;
    };

    ScreenItem(int type, int relation, Settings settings, const RunClock& clock);

    bool isScreenItem() const override { return true; }
    bool evaluate(TaskInfo& task) override;
    // The detection step of each cycle.
    void prepare(TaskInfo& task);
    // Whether one detection on the task's frame shows the expected state, whatever the
    // confirmed time asks on top.
    bool observesExpected(TaskInfo& task) { return found(task); }
    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;

protected:
    // Looks at the frame and returns the observed state bit (0: nothing observed).
    virtual int detect(TaskInfo& task) = 0;

private:
    struct Timing {
        std::int64_t sinceMs = 0;
        std::int64_t durationMs = 0;
    };
    bool found(TaskInfo& task);

    const Settings settings_;
    const RunClock& clock_;
    sys::PerThread<Timing> timing_;
};

}  // namespace autoscene::engine

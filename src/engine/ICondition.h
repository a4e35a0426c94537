#pragma once
// Runtime conditions: evaluated by the worker threads on their TaskInfo, each
// keeping its last outcome per thread for the run view.

#include <QJsonObject>
#include <mutex>
#include <thread>
#include <unordered_map>

#include "engine/TaskInfo.h"

namespace autoscene::engine {

// Outcome of a condition as the run view shows it ("〇:", "✔:", "✘:").
enum class ItemState : int { NotEvaluated = 0, Holds = 1, Fails = 2 };

class ICondition {
public:
    ICondition(int type, int relation) : type_(type), relation_(relation) {}
    virtual ~ICondition() = default;
    ICondition(const ICondition&) = delete;
    ICondition& operator=(const ICondition&) = delete;

    virtual bool evaluate(TaskInfo& task) = 0;
    virtual void reset() {}
    // True for conditions that look at the screen (and groups holding one).
    virtual bool isScreenItem() const { return false; }
    virtual void clearThreadState();
    // Status for the run view: {"type": word, "item_state": n, ...}.
    virtual QJsonObject describe(std::thread::id thread) const;

    int type() const { return type_; }
    int relation() const { return relation_; }
    ItemState itemState(std::thread::id thread) const;

    // The run view's line prefix for a state.
    static QString statePrefix(ItemState state);

protected:
    virtual QString typeWord() const = 0;
    // Records the calling thread's outcome and returns it.
    bool setOutcome(bool holds);

private:
    const int type_;
    const int relation_;
    mutable std::mutex stateMutex_;
    std::unordered_map<std::thread::id, ItemState> states_;
};

}  // namespace autoscene::engine

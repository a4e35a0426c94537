#pragma once
// Runtime actions: run on a worker thread, return their wait in seconds, and keep a
// result record per thread for the run view. Actions never throw; failures go into
// the result record.

#include <QJsonObject>
#include <mutex>
#include <thread>
#include <unordered_map>

#include "engine/TaskInfo.h"

namespace autoscene::engine {

// Whether an action of this type ends a traversal after its event fired. Actions
// that only change run state do not; everything that acts on the target does.
bool interruptsTraversal(int actionType);

class IAction {
public:
    IAction(int type, float waitSeconds) : type_(type), waitSeconds_(waitSeconds) {}
    virtual ~IAction() = default;
    IAction(const IAction&) = delete;
    IAction& operator=(const IAction&) = delete;

    // Performs the action once; returns the wait in seconds.
    virtual float run(TaskInfo& task) = 0;
    // The result record of the thread's last run.
    QJsonObject state(std::thread::id thread) const;
    virtual void reset();
    virtual bool needsPreparation() const { return false; }
    virtual void prepare(TaskInfo&) {}

    int type() const { return type_; }
    float waitSeconds() const { return waitSeconds_; }

protected:
    void setResult(QJsonObject result);

private:
    const int type_;
    const float waitSeconds_;
    mutable std::mutex resultMutex_;
    std::unordered_map<std::thread::id, QJsonObject> results_;
};

}  // namespace autoscene::engine

#pragma once
// Conditions joined strictly left to right by each member's relation (1 and, 2 or)
// with short circuit and no precedence: A and B or C is (A and B) or C.

#include <memory>
#include <vector>

#include "engine/ICondition.h"

namespace autoscene::engine {

class ScreenItem;

class ItemGroup : public ICondition {
public:
    static constexpr int kType = 5;

    explicit ItemGroup(int relation = 1) : ICondition(kType, relation) {}

    void append(std::unique_ptr<ICondition> item);
    bool empty() const { return items_.empty(); }
    const std::vector<std::unique_ptr<ICondition>>& items() const { return items_; }

    bool evaluate(TaskInfo& task) override { return evaluate(task, false); }
    // With `prepare`, each member that is evaluated first runs its detection step.
    bool evaluate(TaskInfo& task, bool prepare);
    // The detection step of every screen item in the group, nested ones included.
    void prepare(TaskInfo& task);
    // Resets image, group, screen-text and colour members; the others keep their state.
    void reset() override;
    void clearThreadState() override;
    bool isScreenItem() const override { return !screenItems_.empty(); }
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("group"); }

private:
    void prepareMember(ICondition& item, TaskInfo& task);

    std::vector<std::unique_ptr<ICondition>> items_;
    std::vector<ICondition*> screenItems_;
};

}  // namespace autoscene::engine

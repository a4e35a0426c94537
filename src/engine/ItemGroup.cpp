#include "engine/ItemGroup.h"

#include <QJsonArray>

#include "engine/ScreenItem.h"

namespace autoscene::engine {

namespace {

constexpr int kAnd = 1;
constexpr int kOr = 2;

// The kinds a group resets; the label condition (8) is left out on purpose.
bool resetByGroup(int type) {
    return type == 1 || type == 5 || type == 6 || type == 7;
}

}  // namespace

void ItemGroup::append(std::unique_ptr<ICondition> item) {
    if (item->isScreenItem()) {
        screenItems_.push_back(item.get());
    }
    items_.push_back(std::move(item));
}

void ItemGroup::prepareMember(ICondition& item, TaskInfo& task) {
    if (auto* group = dynamic_cast<ItemGroup*>(&item)) {
        group->prepare(task);
    } else if (auto* screen = dynamic_cast<ScreenItem*>(&item)) {
        screen->prepare(task);
    }
}

bool ItemGroup::evaluate(TaskInfo& task, bool prepare) {
    if (items_.empty()) {
        return setOutcome(true);
    }
    bool result = false;
    for (size_t i = 0; i < items_.size(); ++i) {
        ICondition& item = *items_[i];
        const bool isOr = item.relation() == kOr;
        // A relation other than and/or is always evaluated, then and-ed.
        if (i > 0 && (result ? isOr : item.relation() == kAnd)) {
            continue;
        }
        if (prepare) {
            prepareMember(item, task);
        }
        const bool value = item.evaluate(task);
        result = i == 0 ? value : (isOr ? result || value : result && value);
    }
    return setOutcome(result);
}

void ItemGroup::prepare(TaskInfo& task) {
    for (ICondition* item : screenItems_) {
        prepareMember(*item, task);
    }
}

void ItemGroup::reset() {
    for (auto& item : items_) {
        if (resetByGroup(item->type())) {
            item->reset();
        }
    }
}

void ItemGroup::clearThreadState() {
    ICondition::clearThreadState();
    for (auto& item : items_) {
        item->clearThreadState();
    }
}

QJsonObject ItemGroup::describe(std::thread::id thread) const {
    QJsonArray members;
    for (const auto& item : items_) {
        members.append(item->describe(thread));
    }
    return {{QStringLiteral("type"), typeWord()}, {QStringLiteral("item_state"), members}};
}

}  // namespace autoscene::engine

#include "engine/ScreenDetection.h"

#include <QLoggingCategory>
#include <exception>

#include "engine/Scene.h"
#include "engine/ScreenItem.h"

namespace autoscene::engine {

Q_LOGGING_CATEGORY(lcDetection, "autoscene.engine.detection")

namespace {

void collect(const ItemGroup& group, std::vector<ScreenItem*>& items) {
    for (const auto& member : group.items()) {
        if (auto* nested = dynamic_cast<const ItemGroup*>(member.get())) {
            collect(*nested, items);
        } else if (auto* screen = dynamic_cast<ScreenItem*>(member.get())) {
            items.push_back(screen);
        }
    }
}

}  // namespace

void prepareScreenItems(const std::vector<std::shared_ptr<RuntimeEvent>>& events, TaskInfo& task,
                        const JobRunner& runJobs) {
    // Kept per worker between cycles, so a cycle allocates nothing here.
    thread_local std::vector<ScreenItem*> items;
    items.clear();
    for (const auto& event : events) {
        if (event->conditions) {
            collect(*event->conditions, items);
        }
    }
    // Helper threads see their own thread_local, so the list goes by reference.
    const std::function<void(size_t)> job = [&task, &list = items](size_t i) {
        if (task.stop.stop_requested()) {
            return;
        }
        try {
            list[i]->prepare(task);
        } catch (const std::exception& e) {
            qCWarning(lcDetection) << "detection failed:" << e.what();
        }
    };
    if (runJobs) {
        runJobs(items.size(), job);
    } else {
        for (size_t i = 0; i < items.size(); ++i) {
            job(i);
        }
    }
}

}  // namespace autoscene::engine

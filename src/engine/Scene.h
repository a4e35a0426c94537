#pragma once
// The runtime scenes of a run: each with its identification event and its events,
// common events shared by every scene that receives them.

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

#include "engine/IAction.h"
#include "engine/ItemGroup.h"
#include "system/PerThread.h"

namespace autoscene::engine {

class IMVSceneEvent;

class RuntimeEvent {
public:
    QString name;
    std::unique_ptr<ItemGroup> conditions;  // null: the event always fires
    std::vector<std::unique_ptr<IAction>> actions;
    bool stopsTraversal = false;
    bool common = false;

    bool hasConditions() const { return conditions && !conditions->empty(); }
};

class Scene {
public:
    struct ThreadState {
        bool recognised = false;
        int lastFired = -1;
        std::int64_t recognisedSinceMs = 0;
    };

    QString name;
    std::unique_ptr<RuntimeEvent> identification;
    std::vector<std::shared_ptr<RuntimeEvent>> events;
    IMVSceneEvent* observer = nullptr;
    sys::PerThread<ThreadState> state;

    bool hasIdentification() const { return identification && identification->hasConditions(); }

    // The identification event followed by the scene's events.
    std::vector<RuntimeEvent*> allEvents() const {
        std::vector<RuntimeEvent*> all{identification.get()};
        for (const auto& event : events) {
            all.push_back(event.get());
        }
        return all;
    }
};

}  // namespace autoscene::engine

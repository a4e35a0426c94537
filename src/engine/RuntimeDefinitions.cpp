#include "engine/RuntimeDefinitions.h"

#include <QTime>
#include <algorithm>

#include "engine/MVAlarm.h"
#include "engine/MVRandom.h"
#include "engine/MVTimer.h"
#include "model/Definitions.h"
#include "model/TaskDocument.h"

namespace autoscene::engine {

using namespace autoscene::model;

namespace {

MVVariable::Scope scopeOf(const EditorVariable& definition) {
    return {definition.isLocal, definition.isConfig, definition.isGlobal};
}

std::unique_ptr<MVVariable> build(const EditorVariable& definition, const RunClock& clock) {
    if (const auto* timer = dynamic_cast<const EditorTimer*>(&definition)) {
        return std::make_unique<MVTimer>(
            timer->id, timer->name, scopeOf(*timer),
            MVTimer::Settings{timer->delay, timer->period, timer->defaultClose}, clock);
    }
    if (const auto* alarm = dynamic_cast<const EditorAlarm*>(&definition)) {
        const QTime time = QTime::fromString(alarm->timeOfDay, QStringLiteral("HH:mm:ss"));
        return std::make_unique<MVAlarm>(
            alarm->id, alarm->name, scopeOf(*alarm),
            MVAlarm::Settings{time.isValid() ? time : QTime(0, 0), alarm->timeout, alarm->repeat},
            clock);
    }
    if (const auto* random = dynamic_cast<const EditorRandom*>(&definition)) {
        return std::make_unique<MVRandom>(random->id, random->name, random->min, random->max);
    }
    return std::make_unique<MVVariable>(definition.id, definition.name, definition.value,
                                        scopeOf(definition));
}

}  // namespace

RuntimeDefinitions::RuntimeDefinitions(const TaskDocument& task, const RunClock& clock) {
    for (const auto& definition : task.definitions) {
        if (const auto* crop = dynamic_cast<const CropInfo*>(definition.get())) {
            crops_[crop->id] = crop->rect;
        }
        variables_.try_emplace(definition->id, build(*definition, clock));
    }
}

MVVariable* RuntimeDefinitions::find(int id) const {
    const auto it = variables_.find(id);
    return it == variables_.end() ? nullptr : it->second.get();
}

std::optional<QRect> RuntimeDefinitions::cropRect(int id) const {
    const auto it = crops_.find(id);
    return it == crops_.end() ? std::nullopt : std::optional(it->second);
}

void RuntimeDefinitions::resetAll() {
    resetAllExcept({});
}

void RuntimeDefinitions::resetAllExcept(const std::vector<int>& keep) {
    for (auto& [id, variable] : variables_) {
        if (std::find(keep.begin(), keep.end(), id) == keep.end()) {
            variable->reset();
        }
    }
}

}  // namespace autoscene::engine

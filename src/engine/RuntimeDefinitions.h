#pragma once
// The runtime side of a task's definitions: variables, timers, alarms, randoms and
// image variables by id, and the crop rectangles that items search in.

#include <QRect>
#include <map>
#include <memory>
#include <optional>

#include "engine/MVVariable.h"

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::engine {

class RunClock;

class RuntimeDefinitions {
public:
    RuntimeDefinitions(const model::TaskDocument& task, const RunClock& clock);

    MVVariable* find(int id) const;
    template <class T>
    T* findAs(int id) const {
        return dynamic_cast<T*>(find(id));
    }
    // The rectangle of a crop definition, or nothing.
    std::optional<QRect> cropRect(int id) const;

    // Every variable back to its default and every timer and alarm re-armed.
    void resetAll();
    // Resets all but the given ids.
    void resetAllExcept(const std::vector<int>& keep);
    template <class Fn>
    void forEach(Fn&& fn) const {
        for (const auto& [id, variable] : variables_) {
            fn(*variable);
        }
    }

private:
    std::map<int, std::unique_ptr<MVVariable>> variables_;
    std::map<int, QRect> crops_;
};

}  // namespace autoscene::engine

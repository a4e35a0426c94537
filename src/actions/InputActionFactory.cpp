#include <rapidjson/document.h>

#include "actions/ActionGroups.h"
#include "actions/InputActions.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;

namespace {

// A key group as stored: a JSON array of key codes; anything else is an empty group.
std::vector<int> keyGroup(const RawJson& group) {
    rapidjson::Document json;
    std::vector<int> codes;
    if (json.Parse(group.text.c_str(), group.text.size()).HasParseError() || !json.IsArray()) {
        return codes;
    }
    for (const auto& item : json.GetArray()) {
        if (item.IsInt()) {
            codes.push_back(item.GetInt());
        }
    }
    return codes;
}

}  // namespace

void registerInputActions(engine::RuntimeFactory& factory) {
    factory.addAction<EditorTapAction>([](const EditorTapAction& r, RunContext& c) {
        return std::make_unique<TapAction>(
            c, c.definitions.find(r.variableId), platform::mouseOpOf(r.button),
            ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.multiInterval, r.postpone);
    });
    factory.addAction<EditorSlideAction>([](const EditorSlideAction& r, RunContext& c) {
        std::vector<engine::MVVariable*> places;
        for (int id : r.varList) {
            places.push_back(c.definitions.find(id));
        }
        return std::make_unique<MVSlideAction>(c, places, r.timeList, r.slideTime, r.postpone);
    });
    factory.addAction<EditorKeyAction>([](const EditorKeyAction& r, RunContext& c) {
        return std::make_unique<KeyAction>(c, r.eventType, r.key, keyGroup(r.groupKey), r.postpone);
    });
    factory.addAction<EditorInputAction>([](const EditorInputAction& r, RunContext& c) {
        return std::make_unique<InputAction>(
            c, r.text, r.variable > 0 ? c.definitions.find(r.variable) : nullptr, r.postpone);
    });
    factory.addAction<EditorMouseUpAction>([](const EditorMouseUpAction& r, RunContext& c) {
        return std::make_unique<MouseUpAction>(c, platform::mouseOpOf(r.button), r.postpone);
    });
    factory.addAction<EditorMouseWheelAction>([](const EditorMouseWheelAction& r, RunContext& c) {
        return std::make_unique<MouseWheelAction>(c, r.wheel, c.definitions.find(r.pointVariable),
                                                  r.postpone);
    });
    factory.addAction<EditorStartAppAction>([](const EditorStartAppAction& r, RunContext& c) {
        return std::make_unique<MVStartAppAction>(
            c, r.appPath, r.pathVariable > 0 ? c.definitions.find(r.pathVariable) : nullptr);
    });
    factory.addAction<EditorADBAppAction>([](const EditorADBAppAction& r, RunContext& c) {
        const auto variable = [&](int id) { return id > 0 ? c.definitions.find(id) : nullptr; };
        return std::make_unique<MVADBAppAction>(c, r.packageName, variable(r.varPackageName),
                                                r.activity, variable(r.varActivity));
    });
}

}  // namespace autoscene::actions

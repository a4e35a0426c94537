#pragma once
// Fields of every action record, in writing order after `type`. Times are float
// seconds. The runtime builds its action objects from these.

#include <QString>
#include <vector>

#include "desktop/MouseOp.h"
#include "model/Fields.h"
#include "model/TextRegion.h"

namespace autoscene::model {

struct TapActionRecord {
    int variableId = 0;
    int button = int(platform::MouseOp::LeftClick);
    float postpone = 0.0f;
    float pressTime = 0.0f;
    float interval = 0.0f;
    int clickTimes = 1;
    float multiInterval = 0.0f;

    static constexpr auto fields() {
        using R = TapActionRecord;
        return std::tuple{
            field("variable_id", &R::variableId, Ref::Definition),
            field("button", &R::button),
            field("postpone", &R::postpone),
            field("press_time", &R::pressTime),
            field("interval", &R::interval),
            field("click_times", &R::clickTimes),
            field("multi_interval", &R::multiInterval),
        };
    }
};

struct ImageActionRecord {
    int id = 0;
    int button = int(platform::MouseOp::LeftClick);
    int imageId = 0;
    int searchId = 0;
    int deviationId = 0;
    float postpone = 0.0f;
    float pressTime = 0.0f;
    int clickTimes = 1;
    float interval = 0.0f;

    static constexpr auto fields() {
        using R = ImageActionRecord;
        return std::tuple{
            field("id", &R::id),
            field("button", &R::button),
            field("image_id", &R::imageId, Ref::Image),
            field("search_id", &R::searchId, Ref::Definition),
            field("deviation_id", &R::deviationId, Ref::Definition),
            field("postpone", &R::postpone),
            field("press_time", &R::pressTime),
            field("click_times", &R::clickTimes),
            field("interval", &R::interval),
        };
    }
};

enum class VariableChange : int { Set = 0, Plus = 1, Sub = 2, Reset = 3 };

struct VariableActionRecord {
    int variableId = 0;
    bool isVariableChange = false;
    QString changeValue;
    int changeType = int(VariableChange::Set);
    int contentVariableId = 0;

    static constexpr auto fields() {
        using R = VariableActionRecord;
        return std::tuple{
            field("variable_id", &R::variableId, Ref::Definition),
            field("is_variable_change", &R::isVariableChange),
            field("change_value", &R::changeValue),
            field("change_type", &R::changeType),
            field("content_variable_id", &R::contentVariableId, Ref::Definition),
        };
    }
};

struct ScreenValueActionRecord {
    int variableId = 0;
    int searchId = 0;
    int imageType = 1;
    int threshold = 128;
    RawJson filterColor{"0"};
    float filterSim = 0.9f;

    static constexpr auto fields() {
        using R = ScreenValueActionRecord;
        return std::tuple{
            field("variable_id", &R::variableId, Ref::Definition),
            field("search_id", &R::searchId, Ref::Definition),
            field("image_type", &R::imageType),
            field("threshold", &R::threshold),
            field("filter_color", &R::filterColor),
            field("filter_sim", &R::filterSim),
        };
    }
};

struct SaveCoordActionRecord {
    int imageId = 0;
    int variableId = 0;
    int searchId = 0;
    int deviationId = 0;
    int saveType = 0;

    static constexpr auto fields() {
        using R = SaveCoordActionRecord;
        return std::tuple{
            field("image_id", &R::imageId, Ref::Image),
            field("variable_id", &R::variableId, Ref::Definition),
            field("search_id", &R::searchId, Ref::Definition),
            field("deviation_id", &R::deviationId, Ref::Definition),
            field("save_type", &R::saveType),
        };
    }
};

struct InputActionRecord {
    QString text;
    int variable = 0;
    float postpone = 0.0f;

    static constexpr auto fields() {
        using R = InputActionRecord;
        return std::tuple{
            field("text", &R::text),
            field("variable", &R::variable, Ref::Definition),
            field("postpone", &R::postpone),
        };
    }
};

struct SlideActionRecord {
    std::vector<int> varList;
    float pressTime = 0.0f;
    int slideTime = 0;            // ms of a segment that time_list leaves out
    std::vector<float> timeList;  // seconds: pause before and length of each segment
    float postpone = 0.0f;

    static constexpr auto fields() {
        using R = SlideActionRecord;
        return std::tuple{
            field("var_list", &R::varList, Ref::Definition),
            field("press_time", &R::pressTime),
            field("slide_time", &R::slideTime),
            field("time_list", &R::timeList),
            field("postpone", &R::postpone),
        };
    }
};

struct ResetAllActionRecord {
    std::vector<int> exclude;

    static constexpr auto fields() {
        using R = ResetAllActionRecord;
        return std::tuple{field("exclude", &R::exclude, Ref::Definition)};
    }
};

struct StopActionRecord {
    static constexpr auto fields() { return std::tuple{}; }
};

// Key operations of `event_type`.
enum class KeyEvent : int { Click = 0, Down = 1, Up = 2, Group = 3 };

struct KeyActionRecord {
    int key = 0;
    RawJson groupKey{"[]"};
    int eventType = int(KeyEvent::Click);
    float postpone = 0.0f;

    static constexpr auto fields() {
        using R = KeyActionRecord;
        return std::tuple{
            field("key", &R::key),
            field("group_key", &R::groupKey),
            field("event_type", &R::eventType),
            field("postpone", &R::postpone),
        };
    }
};

struct JavaScriptActionRecord {
    QString jsCode;
    int varId = 0;

    static constexpr auto fields() {
        using R = JavaScriptActionRecord;
        return std::tuple{
            field("js_code", &R::jsCode),
            field("var_id", &R::varId, Ref::Definition),
        };
    }
};

struct MouseWheelActionRecord {
    int wheel = 0;
    float postpone = 0.0f;
    int pointVariable = 0;

    static constexpr auto fields() {
        using R = MouseWheelActionRecord;
        return std::tuple{
            field("wheel", &R::wheel),
            field("postpone", &R::postpone),
            field("point_variable", &R::pointVariable, Ref::Definition),
        };
    }
};

struct DelayActionRecord {
    int max = 0;
    int min = 0;

    static constexpr auto fields() {
        using R = DelayActionRecord;
        return std::tuple{field("max", &R::max), field("min", &R::min)};
    }
};

struct ClickTextActionRecord {
    int deviationId = 0;
    int button = int(platform::MouseOp::LeftClick);
    float postpone = 0.0f;
    float pressTime = 0.0f;
    int clickTimes = 1;
    float interval = 0.0f;
    TextRegion textInfo;

    static constexpr auto fields() {
        using R = ClickTextActionRecord;
        return std::tuple{
            field("deviation_id", &R::deviationId, Ref::Definition),
            field("button", &R::button),
            field("postpone", &R::postpone),
            field("press_time", &R::pressTime),
            field("click_times", &R::clickTimes),
            field("interval", &R::interval),
            field("text_info", &R::textInfo),
        };
    }
};

struct StartAppActionRecord {
    QString appPath;
    int pathVariable = 0;

    static constexpr auto fields() {
        using R = StartAppActionRecord;
        return std::tuple{
            field("app_path", &R::appPath),
            field("path_variable", &R::pathVariable, Ref::Definition),
        };
    }
};

struct MouseUpActionRecord {
    int button = int(platform::MouseOp::LeftUp);
    float postpone = 0.0f;

    static constexpr auto fields() {
        using R = MouseUpActionRecord;
        return std::tuple{field("button", &R::button), field("postpone", &R::postpone)};
    }
};

struct LabelActionRecord {
    int button = int(platform::MouseOp::LeftClick);
    int labelId = 0;
    int searchId = 0;
    int deviationId = 0;
    float sim = 0.5f;
    float postpone = 0.0f;
    float pressTime = 0.0f;
    int clickTimes = 1;
    float interval = 0.0f;

    static constexpr auto fields() {
        using R = LabelActionRecord;
        return std::tuple{
            field("button", &R::button),
            field("label_id", &R::labelId, Ref::Label),
            field("search_id", &R::searchId, Ref::Definition),
            field("deviation_id", &R::deviationId, Ref::Definition),
            field("sim", &R::sim),
            field("postpone", &R::postpone),
            field("press_time", &R::pressTime),
            field("click_times", &R::clickTimes),
            field("interval", &R::interval),
        };
    }
};

struct SaveLabelCoordActionRecord {
    int labelId = 0;
    int variableId = 0;
    float sim = 0.5f;
    int searchId = 0;
    int deviationId = 0;
    int saveType = 0;

    static constexpr auto fields() {
        using R = SaveLabelCoordActionRecord;
        return std::tuple{
            field("label_id", &R::labelId, Ref::Label),
            field("variable_id", &R::variableId, Ref::Definition),
            field("sim", &R::sim),
            field("search_id", &R::searchId, Ref::Definition),
            field("deviation_id", &R::deviationId, Ref::Definition),
            field("save_type", &R::saveType),
        };
    }
};

struct PluginActionRecord {
    RawJson actionArg{"[]"};
    RawJson actionVarvalue{"[]"};
    RawJson actionInputs{"[]"};
    RawJson actionOption{"[]"};
    RawJson actionOptioninputs{"[]"};
    RawJson actionResult{"[]"};
    RawJson actionOutputs{"[]"};
    QString actionName;
    QString configFile;

    static constexpr auto fields() {
        using R = PluginActionRecord;
        return std::tuple{
            field("action_arg", &R::actionArg),
            field("action_varvalue", &R::actionVarvalue),
            field("action_inputs", &R::actionInputs),
            field("action_option", &R::actionOption),
            field("action_optioninputs", &R::actionOptioninputs),
            field("action_result", &R::actionResult),
            field("action_outputs", &R::actionOutputs),
            field("action_name", &R::actionName),
            field("config_file", &R::configFile),
        };
    }
};

struct ClickColorActionRecord {
    int colorId = 0;
    int button = int(platform::MouseOp::LeftClick);
    float postpone = 0.0f;
    float pressTime = 0.0f;
    int clickTimes = 1;
    float interval = 0.0f;
    int searchId = 0;
    int deviationId = 0;

    static constexpr auto fields() {
        using R = ClickColorActionRecord;
        return std::tuple{
            field("color_id", &R::colorId, Ref::Color),
            field("button", &R::button),
            field("postpone", &R::postpone),
            field("press_time", &R::pressTime),
            field("click_times", &R::clickTimes),
            // Read from one key and written under another on purpose: a saved pause
            // comes back as the default.
            renamedField("interval", "multi_interval", &R::interval),
            field("search_id", &R::searchId, Ref::Definition),
            field("deviation_id", &R::deviationId, Ref::Definition),
        };
    }
};

struct AdbAppActionRecord {
    int varPackageName = 0;
    int varActivity = 0;
    QString packageName;
    QString activity;

    static constexpr auto fields() {
        using R = AdbAppActionRecord;
        return std::tuple{
            field("var_package_name", &R::varPackageName, Ref::Definition),
            field("var_activity", &R::varActivity, Ref::Definition),
            field("package_name", &R::packageName),
            field("activity", &R::activity),
        };
    }
};

}  // namespace autoscene::model

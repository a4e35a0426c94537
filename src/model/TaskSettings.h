#pragma once
// Run settings of a task and the window it drives.

#include <QString>

#include "model/Fields.h"

namespace autoscene::model {

// How the runner walks a scene's events (`loop_mode`).
enum class LoopMode : int { Invalid = 0, Sequential = 1, SingleEvent = 2 };

// Kind of target (`task_mode`).
enum class TaskMode : int { Invalid = 0, FullScreen = 1, Window = 2, AndroidDevice = 3 };

struct WindowInfo {
    QString className;
    QString title;
    QString childClassName;
    QString childTitle;
    bool isFullmatchTitle = false;
    bool modifySize = false;
    int width = 800;
    int height = 600;

    static constexpr auto fields() {
        using R = WindowInfo;
        return std::tuple{
            field("class_name", &R::className),
            field("title", &R::title),
            field("child_class_name", &R::childClassName),
            field("child_title", &R::childTitle),
            field("is_fullmatch_title", &R::isFullmatchTitle),
            field("modify_size", &R::modifySize),
            field("width", &R::width),
            field("height", &R::height),
        };
    }
};

struct TaskSettings {
    int loopMode = int(LoopMode::Sequential);
    int loopInterval = 200;  // ms before each cycle; 0 or less: none
    WindowInfo windowInfo;
    int expandSize = 0;
    bool backAct = false;
    bool backCapture = false;
    bool concurrency = false;
    int taskMode = int(TaskMode::FullScreen);
    bool isFullScript = false;  // read, never written
};

// A row of the task's settings page.
struct ConfigLayoutRow {
    int type = 0;
    QString text;
    std::vector<int> variableList;

    static constexpr auto fields() {
        using R = ConfigLayoutRow;
        return std::tuple{
            field("type", &R::type),
            field("text", &R::text),
            field("variable_list", &R::variableList, Ref::Definition),
        };
    }
};

}  // namespace autoscene::model

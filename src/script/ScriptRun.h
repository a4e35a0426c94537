#pragma once
// One evaluation of a task's code on a worker, as the script condition and action do it.

#include <QString>

#include "engine/RunContext.h"
#include "engine/TaskInfo.h"
#include "script/ScriptEngineHolder.h"

namespace autoscene::script {

// A fresh engine prepared with the run's variables; dropped when it returns. `windows`
// serves the window methods of `auto`; without it they find nothing.
ScriptResult runScript(const engine::RunContext& context, engine::TaskInfo& worker,
                       const QString& code, platform::IWindowControl* windows = nullptr);

// At most `kShownCharacters` of `text` for the run view and the log, with the full length
// when it was cut.
QString shownText(const QString& text);

}  // namespace autoscene::script

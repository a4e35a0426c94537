#pragma once
// What one run of an open task needs, put together the same way for the headless runner
// and the application: the window target and its matcher, the runtime items, the OCR
// service for tasks that read screen text, and the runner.

#include <memory>

#include "app/OcrServiceWatcher.h"
#include "desktop/DesktopBackend.h"
#include "desktop/WindowControl.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "targets/WindowTarget.h"

namespace autoscene::model {
class TaskDocument;
struct WindowInfo;
}  // namespace autoscene::model

namespace autoscene::app {

// The windows a task's window record names.
platform::WindowQuery windowQueryOf(const model::WindowInfo& info);

class RunSession {
public:
    // The task and the back end must outlive the session. `windows` serves the window
    // methods of the task's scripts; without it they find nothing.
    RunSession(const model::TaskDocument& task, platform::IDesktopBackend& backend,
               targets::WindowTarget::Modes modes, const platform::WindowQuery& query,
               platform::IWindowControl* windows);
    RunSession(const RunSession&) = delete;
    RunSession& operator=(const RunSession&) = delete;

    // Starts morvane-ocr from beside the program or the working folder when the task reads
    // screen text; false when the task needs it and it is missing.
    bool startOcrService();

    engine::TaskRunner& runner() { return *runner_; }
    targets::WindowQueryMatcher& matcher() { return matcher_; }

private:
    const model::TaskDocument& task_;
    std::shared_ptr<text::OcrClient> ocr_;
    OcrServiceWatcher ocrService_;
    engine::RuntimeFactory factory_;
    targets::WindowTarget target_;
    targets::WindowQueryMatcher matcher_;
    // Last, so that the run ends before what it uses goes.
    std::unique_ptr<engine::TaskRunner> runner_;
};

}  // namespace autoscene::app

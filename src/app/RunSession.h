#pragma once
// What one run of an open task needs on a target, put together the same way for the
// headless runner and the application: the runtime items, the OCR service for tasks that
// read screen text, and the runner on the detection pool.

#include <memory>
#include <optional>

#include "app/OcrServiceWatcher.h"
#include "desktop/DesktopBackend.h"
#include "desktop/WindowControl.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"

namespace autoscene::model {
class TaskDocument;
struct WindowInfo;
}  // namespace autoscene::model

namespace autoscene::app {

// The windows a task's window record names.
platform::WindowQuery windowQueryOf(const model::WindowInfo& info);

class RunSession {
public:
    // The task and the target service must outlive the session. `windows` serves the window
    // methods of the task's scripts; without it they find nothing.
    RunSession(const model::TaskDocument& task, engine::ITargetService& service,
               platform::IWindowControl* windows,
               std::shared_ptr<engine::RunClock> clock = nullptr);
    RunSession(const RunSession&) = delete;
    RunSession& operator=(const RunSession&) = delete;

    // Starts morvane-ocr from beside the program or the working folder when the task reads
    // screen text (on `port` when given, else ocr.ini's); false when the task needs it and
    // it is missing.
    bool startOcrService(std::optional<int> port = std::nullopt);

    engine::TaskRunner& runner() { return *runner_; }

private:
    const model::TaskDocument& task_;
    std::shared_ptr<text::OcrClient> ocr_;
    OcrServiceWatcher ocrService_;
    engine::RuntimeFactory factory_;
    // Last, so that the run ends before what it uses goes.
    std::unique_ptr<engine::TaskRunner> runner_;
};

}  // namespace autoscene::app

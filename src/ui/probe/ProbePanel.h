#pragma once
// Test on the screen: runs one condition or find-then-click action of the editor on the
// live screen or on one of the task's originals and shows what it saw.

#include <QDialog>
#include <memory>
#include <opencv2/core/mat.hpp>

#include "probe/ProbeResult.h"

class QComboBox;
class QLabel;
class QListWidget;

namespace autoscene::model {
class TaskDocument;
class IEditorCondition;
class IEditorAction;
}  // namespace autoscene::model
namespace autoscene::platform {
class IDesktopBackend;
}

namespace autoscene::ui {

class ProbeFrameView;

class ProbePanel : public QDialog {
    Q_OBJECT
public:
    // Exactly one of `condition` and `action`; both are copied. Without a desktop only the
    // originals can be chosen.
    ProbePanel(const model::TaskDocument& task, const model::IEditorCondition* condition,
               const model::IEditorAction* action, platform::IDesktopBackend* desktop,
               QWidget* parent = nullptr);
    ~ProbePanel() override;

    QComboBox& source() { return *source_; }
    ProbeFrameView& view() { return *view_; }
    const probe::ProbeResult& result() const { return result_; }

    // Runs the item on the chosen frame and shows the outcome.
    void test();

private:
    // BGR; empty with a message shown when the frame cannot be had.
    cv::Mat chosenFrame();
    void showOutcome();

    const model::TaskDocument& task_;
    std::unique_ptr<model::IEditorCondition> condition_;
    std::unique_ptr<model::IEditorAction> action_;
    platform::IDesktopBackend* desktop_;
    QComboBox* source_;
    ProbeFrameView* view_;
    QLabel* verdict_;
    QListWidget* candidates_;
    probe::ProbeResult result_;
};

}  // namespace autoscene::ui

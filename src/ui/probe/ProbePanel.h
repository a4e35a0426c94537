#pragma once
// Test on the screen: runs one condition or find-then-click action of the editor, or every
// condition of a group, on the live screen or on one of the task's originals and shows what
// it saw.

#include <QDialog>
#include <QImage>
#include <functional>
#include <memory>
#include <vector>

#include "probe/ProbeResult.h"
#include "screen/LatestAnswer.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace autoscene::model {
class TaskDocument;
class IEditorCondition;
class IEditorAction;
}  // namespace autoscene::model
namespace autoscene::probe {
class ConditionProbe;
}
namespace autoscene::platform {
class IDesktopBackend;
}
namespace autoscene::text {
class OcrClient;
}

namespace autoscene::ui {

class ProbeFrameView;
class ProbeOcr;

class ProbePanel : public QDialog {
    Q_OBJECT
public:
    // Prepares a capture of the task's target on the window's thread (asking what it must)
    // to be taken on another; empty, after the user was told why, when there is none.
    using TargetCapture = std::function<std::function<QImage()>()>;

    // Exactly one of `condition` and `action`; both are copied. A group condition has each
    // of its conditions tested and listed. Conditions show their verdicts first; what lies
    // beyond the search areas of images not found in them follows. The live screen is the
    // task's target when `target` is given and the task names one, else the whole screen
    // of `desktop`; with neither only the originals can be chosen. Text items read with
    // `ocr`'s service.
    ProbePanel(const model::TaskDocument& task, const model::IEditorCondition* condition,
               const model::IEditorAction* action, platform::IDesktopBackend* desktop,
               TargetCapture target = {}, ProbeOcr* ocr = nullptr, QWidget* parent = nullptr);
    ~ProbePanel() override;

    QComboBox& source() { return *source_; }
    ProbeFrameView& view() { return *view_; }
    // Of the tested condition chosen in the list (the only one when there is no list).
    const probe::ProbeResult& result() const { return result_; }
    // A group's conditions with their verdicts; hidden for a single item.
    QListWidget& tested() { return *tested_; }

    // Runs the item on the chosen frame and shows the outcome; a live frame is captured on
    // a thread of its own first, and the outcome shown when it comes.
    void test();
    // A live capture is on its way.
    bool capturing() const { return capture_.busy(); }

private:
    // The capture of the live entry; empty when there is none.
    std::function<QImage()> liveCapture();
    void testOn(const QImage& picture);
    // What the item reads text with; null, with the reason shown, when it cannot.
    std::shared_ptr<const text::OcrClient> textReader();
    // Looks beyond the search areas for the results of the newest test, `asked`.
    void lookBeyond(int asked);
    void showResults();
    void showOutcome();
    QString verdictText(const probe::ProbeResult& result) const;

    const model::TaskDocument& task_;
    std::unique_ptr<model::IEditorCondition> condition_;
    std::vector<const model::IEditorCondition*> conditions_;  // of condition_, in order
    // condition_ is a group: its conditions are listed.
    bool group_ = false;
    std::unique_ptr<model::IEditorAction> action_;
    platform::IDesktopBackend* desktop_;
    TargetCapture target_;
    ProbeOcr* ocr_;
    QPushButton* run_;
    QComboBox* source_;
    ProbeFrameView* view_;
    QLabel* verdict_;
    QListWidget* candidates_;
    QListWidget* tested_;
    std::unique_ptr<probe::ConditionProbe> probe_;
    QImage shown_;
    std::vector<probe::ProbeResult> results_;
    int tests_ = 0;
    probe::ProbeResult result_;
    QString unreadable_;  // why text items read nothing, shown with their outcome
    LatestAnswer<QImage> capture_{this};
};

}  // namespace autoscene::ui

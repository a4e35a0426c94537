#pragma once
// The screen tools over the task's originals: take a screenshot of the target, then cut
// template images, search areas, click areas and text regions from it, or pick a colour
// with a preview of the pixels the colour condition counts. Each addition is one
// undoable step of the task.

#include <QDialog>
#include <QImage>
#include <cstdint>
#include <functional>
#include <optional>

#include "screen/LatestAnswer.h"
#include "screen/ScreenResources.h"

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace autoscene::ui {

class OriginalView;
class TaskEditor;

class ScreenToolsDialog : public QDialog {
    Q_OBJECT
public:
    // In the order of the mode list.
    enum class Mode { Template, SearchArea, ClickArea, TextRegion, Colour };
    // A picture of the task's target, or a null image after the user was told why not.
    using Capture = std::function<QImage()>;

    // Without a capture the screenshot button is disabled.
    ScreenToolsDialog(TaskEditor& editor, Capture capture, QWidget* parent = nullptr);

    void setMode(Mode mode);
    Mode mode() const;
    // Shows original `id`; false when it or its picture is missing.
    bool showOriginal(int id);
    int originalId() const { return originalId_; }
    // Takes a picture after the delay that is set, keeps it as an original and shows it.
    void takeScreenshot();
    // The record the mode makes of the selection or the picked colour; the new id, or 0
    // after the reason was shown.
    int saveCurrent();
    void pickColour(QPoint pixel);
    OriginalView& view() { return *view_; }
    // The search for other matches of a template just cut is running.
    bool searching() const { return uniqueness_.busy(); }

private:
    QWidget* buildSidePanel();
    QLayout* buildTopRow();
    void refreshOriginals();
    void refreshTemplates();
    void showCutOverlays();
    void showSelection(const QRect& rect);
    void selectionTyped();
    void updateColourPreview();
    void suggestName();
    // Says whether the new template is found elsewhere in the original too, once a search
    // off the window's thread has looked.
    void warnOfOtherMatch(int imageId, const QString& name);
    void showOtherMatch(const std::optional<OtherMatch>& other, const QString& name);
    void showMessage(const QString& text, bool error);

    TaskEditor& editor_;
    Capture capture_;
    int originalId_ = 0;
    QImage picture_;
    std::int64_t colour_ = -1;  // 0xRRGGBB, -1 before one is picked

    OriginalView* view_ = nullptr;
    QComboBox* originals_ = nullptr;
    QPushButton* captureButton_ = nullptr;
    QSpinBox* delay_ = nullptr;
    QLabel* zoomText_ = nullptr;
    QComboBox* mode_ = nullptr;
    QComboBox* templates_ = nullptr;
    QWidget* templateRow_ = nullptr;
    QWidget* rectRow_ = nullptr;
    QSpinBox* x_ = nullptr;
    QSpinBox* y_ = nullptr;
    QSpinBox* width_ = nullptr;
    QSpinBox* height_ = nullptr;
    QWidget* colourRow_ = nullptr;
    QLabel* swatch_ = nullptr;
    QDoubleSpinBox* similarity_ = nullptr;
    QLabel* count_ = nullptr;
    QLineEdit* name_ = nullptr;
    QPushButton* save_ = nullptr;
    QLabel* message_ = nullptr;
    LatestAnswer<std::optional<OtherMatch>> uniqueness_{this};
};

}  // namespace autoscene::ui

#include "screen/ScreenToolsDialog.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/AccessibleNames.h"
#include "editor/TaskEditor.h"
#include "screen/OriginalView.h"
#include "screen/ScreenResources.h"

namespace autoscene::ui {

namespace {

const QColor kTemplateColour(40, 120, 255);
const QColor kAreaColour(0, 170, 90);
const QColor kOtherMatchColour(255, 140, 0);

QSpinBox* coordinateBox(const char* objectName, const QString& accessibleName) {
    auto* box = new QSpinBox;
    box->setObjectName(QString::fromLatin1(objectName));
    box->setAccessibleName(accessibleName);
    box->setRange(0, 0);
    return box;
}

// Labels whose text changes stay named after it.
void showText(QLabel* label, const QString& text) {
    label->setText(text);
    label->setAccessibleName(text);
}

}  // namespace

ScreenToolsDialog::ScreenToolsDialog(TaskEditor& editor, Capture capture, QWidget* parent)
    : QDialog(parent), editor_(editor), capture_(std::move(capture)) {
    setObjectName(QStringLiteral("ScreenToolsDialog"));
    setWindowTitle(tr("原图与截图"));
    view_ = new OriginalView;
    auto* body = new QHBoxLayout;
    body->addWidget(view_, 1);
    body->addWidget(buildSidePanel());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildTopRow());
    layout->addLayout(body, 1);

    connect(view_, &OriginalView::selectionChanged, this, &ScreenToolsDialog::showSelection);
    connect(view_, &OriginalView::pixelPicked, this, &ScreenToolsDialog::pickColour);
    connect(view_, &OriginalView::zoomChanged, this, [this](double zoom) {
        showText(zoomText_, QStringLiteral("%1%").arg(zoom * 100, 0, 'f', zoom < 1 ? 1 : 0));
    });
    connect(&editor_, &TaskEditor::resourcesChanged, this, [this] {
        const auto& originals = editor_.document().originals;
        if (std::none_of(originals.begin(), originals.end(),
                         [this](const auto& original) { return original.id == originalId_; })) {
            // Undone: nothing may be cut from an original the task no longer has.
            uniqueness_.drop();
            originalId_ = 0;
            picture_ = QImage();
            view_->setImage(picture_);
            setMode(mode());
        }
        refreshOriginals();
        refreshTemplates();
        showCutOverlays();
    });
    connect(&editor_, &TaskEditor::definitionsChanged, this, &ScreenToolsDialog::showCutOverlays);
    refreshOriginals();
    const auto& originals = editor_.document().originals;
    if (!originals.empty()) {
        showOriginal(originals.back().id);
    }
    setMode(Mode::Template);
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(button == save_);
    }
    nameControlsAfterText(*this);
    resize(1180, 760);
}

QLayout* ScreenToolsDialog::buildTopRow() {
    originals_ = new QComboBox;
    originals_->setObjectName(QStringLiteral("comboBox_ori"));
    originals_->setAccessibleName(tr("原图"));
    originals_->setMinimumContentsLength(16);
    connect(originals_, &QComboBox::activated, this,
            [this](int index) { showOriginal(originals_->itemData(index).toInt()); });
    captureButton_ = new QPushButton(tr("截图"));
    captureButton_->setObjectName(QStringLiteral("pushButton_capture"));
    captureButton_->setEnabled(bool(capture_));
    connect(captureButton_, &QPushButton::clicked, this, &ScreenToolsDialog::takeScreenshot);
    delay_ = new QSpinBox;
    delay_->setObjectName(QStringLiteral("spinBox_delay"));
    delay_->setAccessibleName(tr("延时(秒)"));
    delay_->setRange(0, 30);
    delay_->setSuffix(tr(" 秒"));
    zoomText_ = new QLabel(QStringLiteral("100%"));
    zoomText_->setObjectName(QStringLiteral("label_zoom"));
    zoomText_->setMinimumWidth(48);

    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(tr("原图:")));
    row->addWidget(originals_);
    row->addWidget(captureButton_);
    row->addWidget(new QLabel(tr("延时(秒)")));
    row->addWidget(delay_);
    row->addStretch(1);
    const auto zoomButton = [&](const QString& text, const char* name, auto slot) {
        auto* button = new QPushButton(text);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, view_, slot);
        row->addWidget(button);
    };
    zoomButton(tr("缩小"), "pushButton_zoom_out", &OriginalView::zoomOut);
    row->addWidget(zoomText_);
    zoomButton(tr("放大"), "pushButton_zoom_in", &OriginalView::zoomIn);
    zoomButton(tr("适合窗口"), "pushButton_zoom_fit", &OriginalView::zoomToFit);
    zoomButton(tr("原始大小"), "pushButton_zoom_one", [this] { view_->setZoom(1); });
    return row;
}

QWidget* ScreenToolsDialog::buildSidePanel() {
    mode_ = new QComboBox;
    mode_->setObjectName(QStringLiteral("comboBox_mode"));
    mode_->setAccessibleName(tr("工具"));
    mode_->addItems({tr("模板图片"), tr("搜索范围"), tr("点击区域"), tr("文字区域"), tr("颜色")});
    connect(mode_, &QComboBox::currentIndexChanged, this, [this] { setMode(mode()); });

    templates_ = new QComboBox;
    templates_->setObjectName(QStringLiteral("comboBox_template"));
    templates_->setAccessibleName(tr("所在图片"));
    connect(templates_, &QComboBox::currentIndexChanged, this, [this] { setMode(mode()); });
    templateRow_ = new QWidget;
    auto* templateForm = new QFormLayout(templateRow_);
    templateForm->setContentsMargins(0, 0, 0, 0);
    templateForm->addRow(tr("所在图片"), templates_);

    x_ = coordinateBox("spinBox_x", tr("X"));
    y_ = coordinateBox("spinBox_y", tr("Y"));
    width_ = coordinateBox("spinBox_width", tr("宽"));
    height_ = coordinateBox("spinBox_height", tr("高"));
    for (QSpinBox* box : {x_, y_, width_, height_}) {
        connect(box, &QSpinBox::valueChanged, this, &ScreenToolsDialog::selectionTyped);
    }
    rectRow_ = new QWidget;
    auto* rectForm = new QFormLayout(rectRow_);
    rectForm->setContentsMargins(0, 0, 0, 0);
    rectForm->addRow(tr("X"), x_);
    rectForm->addRow(tr("Y"), y_);
    rectForm->addRow(tr("宽"), width_);
    rectForm->addRow(tr("高"), height_);

    swatch_ = new QLabel;
    swatch_->setObjectName(QStringLiteral("label_colour"));
    swatch_->setMinimumHeight(24);
    similarity_ = new QDoubleSpinBox;
    similarity_->setObjectName(QStringLiteral("doubleSpinBox_sim"));
    similarity_->setAccessibleName(tr("相似度"));
    similarity_->setRange(0.5, 1.0);
    similarity_->setSingleStep(0.01);
    similarity_->setValue(0.9);
    connect(similarity_, &QDoubleSpinBox::valueChanged, this,
            &ScreenToolsDialog::updateColourPreview);
    count_ = new QLabel;
    count_->setObjectName(QStringLiteral("label_count"));
    count_->setWordWrap(true);
    colourRow_ = new QWidget;
    auto* colourForm = new QFormLayout(colourRow_);
    colourForm->setContentsMargins(0, 0, 0, 0);
    colourForm->addRow(tr("颜色"), swatch_);
    colourForm->addRow(tr("相似度"), similarity_);
    colourForm->addRow(count_);

    name_ = new QLineEdit;
    name_->setObjectName(QStringLiteral("lineEdit_name"));
    name_->setAccessibleName(tr("名称"));
    save_ = new QPushButton(tr("保存"));
    save_->setObjectName(QStringLiteral("pushButton_save"));
    connect(save_, &QPushButton::clicked, this, &ScreenToolsDialog::saveCurrent);
    // Enter saves: the other buttons are no defaults.
    save_->setDefault(true);
    message_ = new QLabel;
    message_->setObjectName(QStringLiteral("label_message"));
    message_->setWordWrap(true);
    auto* close = new QPushButton(tr("关闭"));
    close->setObjectName(QStringLiteral("pushButton_close"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto* panel = new QWidget;
    panel->setFixedWidth(240);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* modeForm = new QFormLayout;
    modeForm->addRow(tr("工具"), mode_);
    layout->addLayout(modeForm);
    layout->addWidget(templateRow_);
    layout->addWidget(rectRow_);
    layout->addWidget(colourRow_);
    auto* nameForm = new QFormLayout;
    nameForm->addRow(tr("名称"), name_);
    layout->addLayout(nameForm);
    layout->addWidget(save_);
    layout->addWidget(message_);
    layout->addStretch(1);
    layout->addWidget(close);
    return panel;
}

ScreenToolsDialog::Mode ScreenToolsDialog::mode() const {
    return Mode(mode_->currentIndex());
}

void ScreenToolsDialog::setMode(Mode mode) {
    {
        const QSignalBlocker blocker(mode_);
        mode_->setCurrentIndex(int(mode));
    }
    const bool colour = mode == Mode::Colour;
    templateRow_->setVisible(mode == Mode::ClickArea);
    rectRow_->setVisible(!colour);
    colourRow_->setVisible(colour);
    view_->setTool(colour ? OriginalView::Tool::Eyedropper : OriginalView::Tool::Rectangle);
    // A click area lies inside the template it belongs to.
    QRect bounds;
    if (mode == Mode::ClickArea) {
        if (const model::ImageRecord* image =
                editor_.document().image(templates_->currentData().toInt())) {
            bounds = image->rect;
        }
    }
    view_->setBounds(bounds);
    save_->setEnabled(!picture_.isNull() && (mode != Mode::ClickArea || !bounds.isEmpty()));
    updateColourPreview();
    showCutOverlays();
    suggestName();
    showText(message_, {});
    if (mode == Mode::ClickArea && bounds.isEmpty() && !picture_.isNull()) {
        showMessage(tr("先从这张原图裁剪模板图片"), true);
    }
}

bool ScreenToolsDialog::showOriginal(int id) {
    const QImage picture = loadOriginal(editor_.document(), id);
    if (picture.isNull()) {
        showMessage(tr("找不到原图文件"), true);
        return false;
    }
    // A search still running on the last picture would mark this one.
    uniqueness_.drop();
    originalId_ = id;
    picture_ = picture;
    const bool first = view_->image().isNull();
    view_->setImage(picture_);
    if (first) {
        view_->zoomToFit();
    }
    for (QSpinBox* box : {x_, width_}) {
        box->setMaximum(picture_.width());
    }
    for (QSpinBox* box : {y_, height_}) {
        box->setMaximum(picture_.height());
    }
    {
        const QSignalBlocker blocker(originals_);
        originals_->setCurrentIndex(originals_->findData(id));
    }
    refreshTemplates();
    setMode(mode());
    return true;
}

void ScreenToolsDialog::refreshOriginals() {
    const QSignalBlocker blocker(originals_);
    originals_->clear();
    for (const auto& original : editor_.document().originals) {
        originals_->addItem(original.name, original.id);
    }
    originals_->setCurrentIndex(originals_->findData(originalId_));
}

void ScreenToolsDialog::refreshTemplates() {
    const QSignalBlocker blocker(templates_);
    const int chosen = templates_->currentData().toInt();
    templates_->clear();
    for (const auto& image : editor_.document().images) {
        if (image.ori == originalId_ && originalId_ != 0) {
            templates_->addItem(image.name, image.id);
        }
    }
    templates_->setCurrentIndex(std::max(0, templates_->findData(chosen)));
}

void ScreenToolsDialog::showCutOverlays() {
    // What was cut from this original before, so that a new cut can be placed against it.
    std::vector<OriginalView::Overlay> overlays;
    const model::TaskDocument& task = editor_.document();
    for (const auto& image : task.images) {
        if (image.ori == originalId_ && originalId_ != 0) {
            overlays.push_back({image.rect, kTemplateColour, image.name});
        }
    }
    for (const auto& definition : task.definitions) {
        const auto* crop = dynamic_cast<const model::CropInfo*>(definition.get());
        if (crop && crop->ori == originalId_ && originalId_ != 0) {
            overlays.push_back({crop->rect, kAreaColour, crop->name});
        }
    }
    view_->setOverlays(std::move(overlays));
}

void ScreenToolsDialog::showSelection(const QRect& rect) {
    for (auto [box, value] : {std::pair{x_, rect.x()}, std::pair{y_, rect.y()},
                              std::pair{width_, rect.width()}, std::pair{height_, rect.height()}}) {
        const QSignalBlocker blocker(box);
        box->setValue(value);
    }
    updateColourPreview();
}

void ScreenToolsDialog::selectionTyped() {
    const QRect typed(x_->value(), y_->value(), width_->value(), height_->value());
    view_->setSelection(typed);
    // A rectangle typed from nothing is empty until its width and height come: the values
    // typed so far stay.
    if (!typed.isEmpty()) {
        showSelection(view_->selection());
    }
}

void ScreenToolsDialog::pickColour(QPoint pixel) {
    if (!picture_.rect().contains(pixel)) {
        return;
    }
    colour_ = picture_.pixel(pixel) & 0xFFFFFF;
    updateColourPreview();
}

void ScreenToolsDialog::updateColourPreview() {
    if (mode() != Mode::Colour || colour_ < 0 || picture_.isNull()) {
        view_->setMask({});
        showText(swatch_, {});
        swatch_->setStyleSheet({});
        showText(count_, mode() == Mode::Colour ? tr("在原图上点击取色") : QString());
        return;
    }
    const QColor colour = QColor::fromRgb(QRgb(colour_));
    showText(swatch_, colour.name().toUpper());
    swatch_->setStyleSheet(QStringLiteral("background-color: %1; color: %2;")
                               .arg(colour.name(), colour.lightness() > 140 ? "black" : "white"));
    const float similarity = float(similarity_->value());
    view_->setMask(colourMask(picture_, colour_, similarity));
    const QRect selection = view_->selection();
    const bool inSelection = !selection.isEmpty();
    const int counted =
        colourCount(picture_, colour_, similarity, inSelection ? selection : picture_.rect());
    showText(count_,
             inSelection ? tr("选区内计数: %1").arg(counted) : tr("全图计数: %1").arg(counted));
}

void ScreenToolsDialog::suggestName() {
    static const char* const stems[] = {QT_TR_NOOP("图片%1"), QT_TR_NOOP("范围%1"),
                                        QT_TR_NOOP("点击区域%1"), QT_TR_NOOP("文字区域%1"),
                                        QT_TR_NOOP("颜色%1")};
    const model::TaskDocument& task = editor_.document();
    const auto taken = [&](const QString& name) {
        switch (mode()) {
            case Mode::Template:
                return std::any_of(task.images.begin(), task.images.end(),
                                   [&](const auto& image) { return image.name == name; });
            case Mode::Colour:
                return std::any_of(task.colors.begin(), task.colors.end(),
                                   [&](const auto& colour) { return colour.name == name; });
            default:
                return !task.isDefinitionNameFree(name);
        }
    };
    const QString stem = tr(stems[int(mode())]);
    int number = 1;
    while (taken(stem.arg(number))) {
        ++number;
    }
    name_->setText(stem.arg(number));
}

void ScreenToolsDialog::takeScreenshot() {
    if (!capture_) {
        return;
    }
    captureButton_->setEnabled(false);
    QTimer::singleShot(delay_->value() * 1000, this, [this] {
        captureButton_->setEnabled(true);
        const QImage picture = capture_();
        if (picture.isNull()) {
            return;  // the capture told the user why
        }
        const SavedResource saved = saveOriginal(editor_, picture);
        if (!saved) {
            showMessage(saved.error, true);
            return;
        }
        showOriginal(saved.id);
        showMessage(tr("原图已保存: %1").arg(originals_->currentText()), false);
    });
}

int ScreenToolsDialog::saveCurrent() {
    const Cut cut{originalId_, picture_, view_->selection(), name_->text().trimmed()};
    SavedResource saved;
    switch (mode()) {
        case Mode::Template:
            saved = saveTemplate(editor_, cut);
            break;
        case Mode::Colour:
            saved = colour_ < 0
                        ? SavedResource{0, tr("在原图上点击取色")}
                        : saveColour(editor_, cut.name, colour_, float(similarity_->value()));
            break;
        default:
            saved = saveArea(editor_, cut);
            break;
    }
    if (!saved) {
        showMessage(saved.error, true);
        return 0;
    }
    const QString name = cut.name;
    suggestName();
    showMessage(tr("已保存: %1").arg(name), false);
    if (mode() == Mode::Template) {
        warnOfOtherMatch(saved.id, name);
    }
    return saved.id;
}

void ScreenToolsDialog::warnOfOtherMatch(int imageId, const QString& name) {
    // A search of the whole original: up to a second on a 1080p screenshot full of detail.
    showMessage(tr("已保存: %1，正在查找原图中的其他匹配…").arg(name), false);
    uniqueness_.ask(matchElsewhere(editor_.document(), imageId, picture_),
                    [this, imageId, name](const std::optional<OtherMatch>& other) {
                        if (editor_.document().image(imageId)) {
                            showOtherMatch(other, name);
                        }
                    });
}

void ScreenToolsDialog::showOtherMatch(const std::optional<OtherMatch>& other,
                                       const QString& name) {
    if (!other) {
        showMessage(tr("已保存: %1，在原图中只匹配一处").arg(name), false);
        return;
    }
    std::vector<OriginalView::Overlay> overlays = view_->overlays();
    overlays.push_back(
        {other->rect, kOtherMatchColour, tr("也匹配 %1").arg(other->score, 0, 'f', 2)});
    view_->setOverlays(std::move(overlays));
    showMessage(tr("已保存: %1。注意: 它在 (%2, %3) 也匹配，相似度 %4 ≥ %5，点击可能落在别处")
                    .arg(name)
                    .arg(other->rect.x())
                    .arg(other->rect.y())
                    .arg(other->score, 0, 'f', 2)
                    .arg(other->similarity, 0, 'f', 2),
                true);
}

void ScreenToolsDialog::showMessage(const QString& text, bool error) {
    message_->setStyleSheet(error ? QStringLiteral("color: #c00000;") : QString());
    showText(message_, text);
}

}  // namespace autoscene::ui

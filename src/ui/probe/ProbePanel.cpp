#include "ui/probe/ProbePanel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "desktop/DesktopBackend.h"
#include "editor/AccessibleNames.h"
#include "model/EditorItem.h"
#include "model/TaskImages.h"
#include "probe/ConditionProbe.h"
#include "ui/probe/ProbeFrameView.h"

namespace autoscene::ui {

namespace {

// The entry of the live screen carries no file name.
QString liveScreen() {
    return {};
}

QImage toImage(const cv::Mat& bgr) {
    return QImage(bgr.data, bgr.cols, bgr.rows, int(bgr.step), QImage::Format_BGR888).copy();
}

QString rectText(const QRect& r) {
    return QStringLiteral("%1,%2 %3×%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

}  // namespace

ProbePanel::ProbePanel(const model::TaskDocument& task, const model::IEditorCondition* condition,
                       const model::IEditorAction* action, platform::IDesktopBackend* desktop,
                       QWidget* parent)
    : QDialog(parent),
      task_(task),
      condition_(condition ? condition->clone() : nullptr),
      action_(action && !condition ? action->clone() : nullptr),
      desktop_(desktop),
      source_(new QComboBox),
      view_(new ProbeFrameView),
      verdict_(new QLabel),
      candidates_(new QListWidget) {
    setObjectName(QStringLiteral("ProbePanel"));
    setWindowTitle(tr("在屏幕上测试"));
    source_->setObjectName(QStringLiteral("comboBox_frame"));
    source_->setAccessibleName(tr("画面"));
    if (desktop_) {
        source_->addItem(tr("当前屏幕"), liveScreen());
    }
    const QDir originals(model::originalsFolder(task_));
    for (const QString& file :
         originals.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name)) {
        source_->addItem(tr("原图 %1").arg(file), originals.filePath(file));
    }
    verdict_->setObjectName(QStringLiteral("label_verdict"));
    verdict_->setWordWrap(true);
    verdict_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    candidates_->setObjectName(QStringLiteral("listWidget_candidates"));
    candidates_->setAccessibleName(tr("候选"));
    candidates_->setMinimumWidth(240);

    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(tr("画面")));
    top->addWidget(source_, 1);
    auto* run = new QPushButton(tr("测试"));
    run->setObjectName(QStringLiteral("pushButton_test"));
    connect(run, &QPushButton::clicked, this, &ProbePanel::test);
    top->addWidget(run);

    auto* split = new QSplitter;
    split->addWidget(view_);
    split->addWidget(candidates_);
    split->setStretchFactor(0, 4);
    split->setStretchFactor(1, 1);

    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    close->button(QDialogButtonBox::Close)->setText(tr("关闭"));
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(split, 1);
    layout->addWidget(verdict_);
    layout->addWidget(close);
    resize(900, 620);
    nameControlsAfterText(*this);
}

ProbePanel::~ProbePanel() = default;

cv::Mat ProbePanel::chosenFrame() {
    const QString file = source_->currentData().toString();
    if (file.isEmpty()) {
        if (!desktop_) {
            return {};
        }
        const platform::BgraFrame captured = desktop_->capture(0, false);
        if (captured.empty()) {
            return {};
        }
        const cv::Mat bgra(captured.height, captured.width, CV_8UC4,
                           const_cast<std::uint8_t*>(captured.pixels.data()),
                           size_t(captured.stride));
        cv::Mat bgr;
        cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
        return bgr;
    }
    // Screenshots are stored as 32-bit RGB; the runner's frames carry no alpha.
    return cv::imread(file.toStdString(), cv::IMREAD_COLOR);
}

void ProbePanel::test() {
    const cv::Mat frame = chosenFrame();
    probe::ConditionProbe probe(task_);
    result_ = condition_ ? probe.run(*condition_, frame) : probe.run(*action_, frame);
    view_->show(frame.empty() ? QImage() : toImage(frame), result_);
    showOutcome();
}

void ProbePanel::showOutcome() {
    QString text;
    if (!result_.probed) {
        text = result_.reason;
    } else {
        text = result_.holds ? tr("成立") : tr("不成立：%1").arg(result_.reason);
        if (result_.threshold > 0.0f && result_.count < 0) {
            text += tr("（阈值 %1）").arg(double(result_.threshold), 0, 'f', 2);
        }
        if (result_.count >= 0) {
            text += tr("（颜色像素 %1）").arg(result_.count);
        }
        if (result_.click) {
            text += tr("，会点击 %1,%2").arg(result_.click->x()).arg(result_.click->y());
        }
    }
    verdict_->setText(text);
    verdict_->setAccessibleName(text);
    candidates_->clear();
    for (const probe::ProbeCandidate& c : result_.candidates) {
        const QString score = c.text.isEmpty() ? QString::number(double(c.score), 'f', 2) : c.text;
        candidates_->addItem(c.inArea ? tr("%1  %2").arg(score, rectText(c.rect))
                                      : tr("%1  %2（范围外）").arg(score, rectText(c.rect)));
    }
}

}  // namespace autoscene::ui

#include "ui/probe/ProbePanel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "desktop/DesktopBackend.h"
#include "editor/AccessibleNames.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/EditorItem.h"
#include "model/TaskDocument.h"
#include "model/TaskImages.h"
#include "probe/ConditionProbe.h"
#include "ui/probe/ProbeFrameView.h"
#include "ui/probe/ProbeOcr.h"

namespace autoscene::ui {

namespace {

// The entry of the live screen carries no file name.
QString liveScreen() {
    return {};
}

QImage toImage(const cv::Mat& bgr) {
    return QImage(bgr.data, bgr.cols, bgr.rows, int(bgr.step), QImage::Format_BGR888).copy();
}

// Whether the task says what it runs on; a window task names its window.
bool namesTarget(const model::TaskSettings& settings) {
    switch (model::TaskMode(settings.taskMode)) {
        case model::TaskMode::FullScreen:
        case model::TaskMode::AndroidDevice:
            return true;
        case model::TaskMode::Window:
            return !settings.windowInfo.title.isEmpty() || !settings.windowInfo.className.isEmpty();
        default:
            return false;
    }
}

// The conditions a group holds, at any depth, in the order the editor shows them.
void collectConditions(const model::IEditorCondition& condition,
                       std::vector<const model::IEditorCondition*>& into) {
    if (condition.type() != model::EditorGroupCondition::kType) {
        into.push_back(&condition);
        return;
    }
    for (const auto& member : static_cast<const model::EditorGroupCondition&>(condition).items()) {
        collectConditions(*member, into);
    }
}

QString rectText(const QRect& r) {
    return QStringLiteral("%1,%2 %3×%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

}  // namespace

ProbePanel::ProbePanel(const model::TaskDocument& task, const model::IEditorCondition* condition,
                       const model::IEditorAction* action, platform::IDesktopBackend* desktop,
                       TargetCapture target, ProbeOcr* ocr, QWidget* parent)
    : QDialog(parent),
      task_(task),
      condition_(condition ? condition->clone() : nullptr),
      action_(action && !condition ? action->clone() : nullptr),
      desktop_(desktop),
      target_(std::move(target)),
      ocr_(ocr),
      run_(new QPushButton(tr("测试"))),
      source_(new QComboBox),
      view_(new ProbeFrameView),
      verdict_(new QLabel),
      candidates_(new QListWidget),
      tested_(new QListWidget) {
    setObjectName(QStringLiteral("ProbePanel"));
    setWindowTitle(tr("在屏幕上测试"));
    source_->setObjectName(QStringLiteral("comboBox_frame"));
    source_->setAccessibleName(tr("画面"));
    if (target_ && namesTarget(task_.settings)) {
        source_->addItem(tr("当前目标"), liveScreen());
    } else if (desktop_) {
        source_->addItem(tr("当前屏幕（未选择目标，截取整个屏幕）"), liveScreen());
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
    if (condition_) {
        collectConditions(*condition_, conditions_);
        group_ = condition_->type() == model::EditorGroupCondition::kType;
    }
    tested_->setObjectName(QStringLiteral("listWidget_conditions"));
    tested_->setAccessibleName(tr("条件"));
    tested_->setMaximumHeight(140);
    connect(tested_, &QListWidget::currentRowChanged, this, &ProbePanel::showOutcome);

    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(tr("画面")));
    top->addWidget(source_, 1);
    run_->setObjectName(QStringLiteral("pushButton_test"));
    connect(run_, &QPushButton::clicked, this, &ProbePanel::test);
    top->addWidget(run_);

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
    layout->addWidget(tested_);
    layout->addWidget(split, 1);
    layout->addWidget(verdict_);
    layout->addWidget(close);
    tested_->setVisible(group_);
    resize(900, 620);
    nameControlsAfterText(*this);
}

ProbePanel::~ProbePanel() = default;

std::function<QImage()> ProbePanel::liveCapture() {
    if (target_ && namesTarget(task_.settings)) {
        return target_();
    }
    if (!desktop_) {
        return {};
    }
    return [desktop = desktop_] {
        // The back end outlives every window.
        const platform::BgraFrame captured = desktop->capture(0, false);
        if (captured.empty()) {
            return QImage();
        }
        return QImage(captured.pixels.data(), captured.width, captured.height, captured.stride,
                      QImage::Format_RGB32)
            .copy();
    };
}

void ProbePanel::test() {
    const QString file = source_->currentData().toString();
    if (!file.isEmpty()) {
        capture_.drop();
        run_->setEnabled(true);
        testOn(QImage(file));
        return;
    }
    std::function<QImage()> capture = liveCapture();
    if (!capture) {
        return;  // the capture told the user why
    }
    verdict_->setText(tr("正在截取画面…"));
    verdict_->setAccessibleName(verdict_->text());
    run_->setEnabled(false);
    capture_.ask(std::move(capture), [this](const QImage& picture) {
        run_->setEnabled(true);
        testOn(picture);
    });
}

std::shared_ptr<const text::OcrClient> ProbePanel::textReader() {
    const bool readsText =
        std::any_of(conditions_.begin(), conditions_.end(),
                    [](const model::IEditorCondition* c) {
                        return c->type() == model::EditorScreenTextCondition::kType;
                    }) ||
        (action_ && action_->type() == model::EditorClickTextAction::kType);
    unreadable_.clear();
    if (!readsText) {
        return nullptr;
    }
    std::shared_ptr<const text::OcrClient> client = ocr_ ? ocr_->client() : nullptr;
    if (!client) {
        unreadable_ = tr("没有文字识别服务（找不到 morvane-ocr），读不到文字");
    } else if (!client->answers()) {
        unreadable_ = tr("文字识别服务没有运行或还在启动，读不到文字；请稍后再试");
    }
    return client;
}

void ProbePanel::testOn(const QImage& picture) {
    // The runner's frames carry no alpha.
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    cv::Mat frame;
    if (!rgb.isNull()) {
        cv::cvtColor(cv::Mat(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.bits()),
                             size_t(rgb.bytesPerLine())),
                     frame, cv::COLOR_RGB2BGR);
    }
    shown_ = frame.empty() ? QImage() : toImage(frame);
    probe_ = std::make_unique<probe::ConditionProbe>(task_, textReader());
    const int asked = ++tests_;
    if (action_) {
        results_ = {probe_->run(*action_, frame)};
    } else {
        results_ = probe_->verdicts(conditions_, frame);
        // Once the verdicts are on the screen.
        QTimer::singleShot(0, this, [this, asked] { lookBeyond(asked); });
    }
    showResults();
}

void ProbePanel::lookBeyond(int asked) {
    if (asked == tests_ && probe_) {
        probe_->lookBeyond(results_);
        showResults();
    }
}

void ProbePanel::showResults() {
    if (group_) {
        const int row = std::max(tested_->currentRow(), 0);
        const QSignalBlocker quiet(tested_);
        tested_->clear();
        for (size_t i = 0; i < conditions_.size() && i < results_.size(); ++i) {
            const QString text =
                tr("%1：%2").arg(conditions_[i]->describe(task_), verdictText(results_[i]));
            tested_->addItem(text);
            tested_->item(int(i))->setData(Qt::AccessibleTextRole, text);
        }
        tested_->setCurrentRow(std::min(row, tested_->count() - 1));
    }
    showOutcome();
}

QString ProbePanel::verdictText(const probe::ProbeResult& result) const {
    if (!result.probed) {
        return result.reason;
    }
    QString text = result.holds ? tr("成立") : tr("不成立：%1").arg(result.reason);
    if (result.threshold > 0.0f && result.count < 0) {
        text += tr("（阈值 %1）").arg(double(result.threshold), 0, 'f', 2);
    }
    if (result.count >= 0) {
        text += tr("（颜色像素 %1）").arg(result.count);
    }
    if (result.click) {
        text += tr("，会点击 %1,%2").arg(result.click->x()).arg(result.click->y());
    }
    if (result.lookingBeyond) {
        text += tr("，正在查找范围外…");
    }
    return text;
}

void ProbePanel::showOutcome() {
    const int row = group_ ? tested_->currentRow() : 0;
    result_ =
        row >= 0 && size_t(row) < results_.size() ? results_[size_t(row)] : probe::ProbeResult();
    view_->show(shown_, result_);
    QString text =
        group_ && conditions_.empty() ? tr("这个条件组里没有条件") : verdictText(result_);
    if (!unreadable_.isEmpty()) {
        text += tr("。%1").arg(unreadable_);
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

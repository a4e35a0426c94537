#include "ui/SettingView.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <cstdlib>
#include <iterator>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "ui/HotKeyEdit.h"

namespace autoscene::ui {

namespace {

// The slider step whose interval is nearest the task's.
int speedStep(int intervalMs) {
    int best = 0;
    for (int step = 1; step < int(std::size(SettingView::kIntervalsMs)); ++step) {
        if (std::abs(SettingView::kIntervalsMs[step] - intervalMs) <
            std::abs(SettingView::kIntervalsMs[best] - intervalMs)) {
            best = step;
        }
    }
    return best;
}

HotKeyEdit* hotKeyField(const char* objectName, const QString& text) {
    auto* field = new HotKeyEdit;
    field->setObjectName(QString::fromLatin1(objectName));
    field->setText(text);
    return field;
}

}  // namespace

SettingView::SettingView(const model::TaskSettings& settings, AppConfig config, QWidget* parent)
    : QDialog(parent), config_(std::move(config)) {
    setObjectName(QStringLiteral("SettingView"));
    setWindowTitle(tr("设置"));

    expandSize_ = new QLineEdit(QString::number(settings.expandSize));
    expandSize_->setObjectName(QStringLiteral("lineEdit_expand_size"));
    expandSize_->setValidator(new QIntValidator(0, 10000, expandSize_));
    expandSize_->setAccessibleName(tr("扩大默认搜索范围"));

    concurrency_ = new QRadioButton(tr("并行"));
    concurrency_->setObjectName(QStringLiteral("radioButton_concurrency"));
    queue_ = new QRadioButton(tr("串行"));
    queue_->setObjectName(QStringLiteral("radioButton_queue"));
    (settings.concurrency ? concurrency_ : queue_)->setChecked(true);
    auto* strategy = new QHBoxLayout;
    strategy->addWidget(concurrency_);
    strategy->addWidget(queue_);
    strategy->addStretch();
    auto* note = new QLabel(tr("注:并行运行速度快、占用资源高，串行运行效率慢、占用资源少"));
    note->setWordWrap(true);

    speed_ = new QSlider(Qt::Horizontal);
    speed_->setObjectName(QStringLiteral("horizontalSlider_speed"));
    speed_->setRange(0, int(std::size(kIntervalsMs)) - 1);
    speed_->setPageStep(1);
    speed_->setTickPosition(QSlider::TicksBelow);
    initialSpeedStep_ = speedStep(settings.loopInterval);
    speed_->setValue(initialSpeedStep_);
    speed_->setAccessibleName(tr("运行速度"));
    auto* speedLabels = new QHBoxLayout;
    const QString names[] = {tr("极速"), tr("中等"), tr("偏慢"), tr("龟速")};
    for (const QString& name : names) {
        speedLabels->addWidget(new QLabel(name));
        if (&name != &names[std::size(names) - 1]) {
            speedLabels->addStretch();
        }
    }
    auto* speed = new QVBoxLayout;
    speed->addWidget(speed_);
    speed->addLayout(speedLabels);

    backCapture_ = new QCheckBox(tr("后台截图"));
    backCapture_->setObjectName(QStringLiteral("checkBox_back_capture"));
    backCapture_->setChecked(settings.backCapture);
    backInput_ = new QCheckBox(tr("后台键鼠"));
    backInput_->setObjectName(QStringLiteral("checkBox_back_keymouse"));
    backInput_->setChecked(settings.backAct);

    auto* task = new QGroupBox(tr("任务"));
    auto* taskForm = new QFormLayout(task);
    taskForm->addRow(tr("扩大默认搜索范围"), expandSize_);
    taskForm->addRow(tr("多窗口"), strategy);
    taskForm->addRow(QString(), note);
    taskForm->addRow(tr("运行速度"), speed);
    taskForm->addRow(QString(), backCapture_);
    taskForm->addRow(QString(), backInput_);

    captureKey_ = hotKeyField("lineEdit_capture_key", config_.captureKey());
    startKey_ = hotKeyField("lineEdit_start_key", config_.startKey());
    stopKey_ = hotKeyField("lineEdit_stop_key", config_.stopKey());
    auto* keys = new QGroupBox(tr("热键"));
    auto* keyForm = new QFormLayout(keys);
    keyForm->addRow(tr("截图热键"), captureKey_);
    keyForm->addRow(tr("启动热键"), startKey_);
    keyForm->addRow(tr("停止热键"), stopKey_);
    captureKey_->setAccessibleName(tr("截图热键"));
    startKey_->setAccessibleName(tr("启动热键"));
    stopKey_->setAccessibleName(tr("停止热键"));

    QDialogButtonBox* buttons = okCancelButtons(*this);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(task);
    layout->addWidget(keys);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
}

void SettingView::applyTo(model::TaskSettings& settings) const {
    settings.expandSize = expandSize_->text().toInt();
    settings.concurrency = concurrency_->isChecked();
    // An interval between the steps stays as it is until the slider is moved.
    if (speed_->value() != initialSpeedStep_) {
        settings.loopInterval = kIntervalsMs[speed_->value()];
    }
    settings.backCapture = backCapture_->isChecked();
    settings.backAct = backInput_->isChecked();
}

void SettingView::saveHotKeys() {
    config_.setHotKeys(captureKey_->text(), startKey_->text(), stopKey_->text());
}

}  // namespace autoscene::ui

#include "ui/SettingView.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <cstdlib>
#include <iterator>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "ui/HotKeyEdit.h"
#include "ui/PluginFuncsDialog.h"

Q_LOGGING_CATEGORY(lcSettings, "autoscene.ui.settings")

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

SettingView::SettingView(const model::TaskDocument& task, AppConfig config, QWidget* parent)
    : QDialog(parent),
      config_(std::move(config)),
      taskFolder_(task.folderPath),
      pluginFile_(task.funcPluginFile),
      pluginServices_(plugins::servicesFromJson(task.enabledPluginFunc.text)) {
    const model::TaskSettings& settings = task.settings;
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

    auto* backgroundNote = new QLabel(
        tr("后台设置说明:\n1、目标窗口不能最小化,部分应用不支持相关功能\n2、使用ADB和全屏模式"
           "不需要设置此项\n3、可以选择插件替代编辑器的后台功能，插件包括截屏、点击、输入等基础"
           "功能"));
    backgroundNote->setWordWrap(true);

    pluginField_ = new QLineEdit;
    pluginField_->setObjectName(QStringLiteral("lineEdit_plugin"));
    pluginField_->setReadOnly(true);
    pluginField_->setAccessibleName(tr("插件"));
    auto* browse = new QPushButton(tr("选择插件"));
    browse->setObjectName(QStringLiteral("pushButton_choose_plugin"));
    connect(browse, &QPushButton::clicked, this, &SettingView::browsePlugin);
    pluginServicesButton_ = new QPushButton(tr("插件功能"));
    pluginServicesButton_->setObjectName(QStringLiteral("pushButton_plugin_funcs"));
    connect(pluginServicesButton_, &QPushButton::clicked, this, &SettingView::editPluginServices);
    auto* plugin = new QHBoxLayout;
    plugin->addWidget(pluginField_, 1);
    plugin->addWidget(browse);
    plugin->addWidget(pluginServicesButton_);
    showPlugin();

    auto* taskBox = new QGroupBox(tr("任务"));
    auto* taskForm = new QFormLayout(taskBox);
    taskForm->addRow(tr("扩大默认搜索范围"), expandSize_);
    taskForm->addRow(tr("多窗口"), strategy);
    taskForm->addRow(QString(), note);
    taskForm->addRow(tr("运行速度"), speed);
    taskForm->addRow(QString(), backCapture_);
    taskForm->addRow(QString(), backInput_);
    taskForm->addRow(tr("插件"), plugin);
    taskForm->addRow(QString(), backgroundNote);

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
    layout->addWidget(taskBox);
    layout->addWidget(keys);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
}

void SettingView::applyTo(TaskSetup& setup) const {
    model::TaskSettings& settings = setup.settings;
    settings.expandSize = expandSize_->text().toInt();
    settings.concurrency = concurrency_->isChecked();
    // An interval between the steps stays as it is until the slider is moved.
    if (speed_->value() != initialSpeedStep_) {
        settings.loopInterval = kIntervalsMs[speed_->value()];
    }
    settings.backCapture = backCapture_->isChecked();
    settings.backAct = backInput_->isChecked();
    setup.pluginFile = pluginFile_;
    setup.pluginServices.text =
        pluginFile_.isEmpty() ? std::string("[]") : plugins::servicesToJson(pluginServices_);
}

bool SettingView::choosePlugin(const QString& path) {
    QString error;
    if (!plugins::BackgroundPlugin::load(path, {}, &error)) {
        qCWarning(lcSettings) << "plug-in" << path << "does not load:" << error;
        showNotice(this, tr("插件加载失败"));
        return false;
    }
    // A library inside the task folder moves with it.
    const QString relative = QDir(taskFolder_).relativeFilePath(path);
    pluginFile_ = !taskFolder_.isEmpty() && !relative.startsWith(QLatin1String(".."))
                      ? relative
                      : QFileInfo(path).absoluteFilePath();
    pluginServices_ = {};
    showPlugin();
    return true;
}

void SettingView::browsePlugin() {
#ifdef Q_OS_WIN
    const QString filter = QStringLiteral("dll Files (*.dll)");
#else
    const QString filter = QStringLiteral("so Files (*.so)");
#endif
    const QString path = QFileDialog::getOpenFileName(this, tr("选择插件"), taskFolder_, filter);
    if (!path.isEmpty() && choosePlugin(path)) {
        editPluginServices();
    }
}

void SettingView::editPluginServices() {
    PluginFuncsDialog dialog(pluginServices_, this);
    const int answer = dialog.exec();
    if (answer == PluginFuncsDialog::kRemoved) {
        pluginFile_.clear();
    } else if (answer == QDialog::Accepted) {
        pluginServices_ = dialog.services();
    }
    showPlugin();
}

void SettingView::showPlugin() {
    pluginField_->setText(pluginFile_);
    pluginServicesButton_->setEnabled(!pluginFile_.isEmpty());
}

void SettingView::saveHotKeys() {
    config_.setHotKeys(captureKey_->text(), startKey_->text(), stopKey_->text());
}

}  // namespace autoscene::ui

#include "ui/templates/ModelsDialog.h"

#include <QComboBox>
#include <QCryptographicHash>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <opencv2/imgcodecs.hpp>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "editor/TaskEditor.h"
#include "model/EditorConditions.h"
#include "model/TaskImages.h"
#include "probe/ConditionProbe.h"
#include "ui/probe/ProbeFrameView.h"

namespace autoscene::ui {

namespace {

QByteArray digest(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

// Copies `from` to `to` unless `to` already holds the same bytes; the error, or empty.
QString copyInto(const QString& from, const QString& to) {
    if (!QFileInfo(from).isFile()) {
        return ModelsDialog::tr("文件不存在：%1").arg(from);
    }
    if (QFileInfo::exists(to)) {
        return digest(from) == digest(to)
                   ? QString()
                   : ModelsDialog::tr("任务里已有另一个同名文件：%1").arg(to);
    }
    return QFile::copy(from, to) ? QString() : ModelsDialog::tr("无法复制到 %1").arg(to);
}

QStringList readNames(const QString& path) {
    QFile file(path);
    QStringList names;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
            if (!line.trimmed().isEmpty()) {
                names << line.trimmed();
            }
        }
    }
    return names;
}

}  // namespace

ModelsDialog::ModelsDialog(TaskEditor& editor, QWidget* parent)
    : QDialog(parent),
      editor_(editor),
      model_(new QLabel),
      labels_(new QComboBox),
      probability_(new QDoubleSpinBox),
      originals_(new QComboBox),
      view_(new ProbeFrameView),
      verdict_(new QLabel) {
    setObjectName(QStringLiteral("ModelsDialog"));
    setWindowTitle(tr("模型"));
    model_->setObjectName(QStringLiteral("label_model"));
    model_->setWordWrap(true);
    labels_->setObjectName(QStringLiteral("comboBox_label"));
    labels_->setAccessibleName(tr("标签"));
    probability_->setObjectName(QStringLiteral("doubleSpinBox_probability"));
    probability_->setAccessibleName(tr("最小概率"));
    probability_->setRange(0.0, 1.0);
    probability_->setSingleStep(0.05);
    probability_->setValue(0.5);
    originals_->setObjectName(QStringLiteral("comboBox_original"));
    originals_->setAccessibleName(tr("原图"));
    const QDir folder(model::originalsFolder(editor_.document()));
    for (const QString& file :
         folder.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name)) {
        originals_->addItem(file, folder.filePath(file));
    }
    verdict_->setObjectName(QStringLiteral("label_verdict"));
    verdict_->setWordWrap(true);

    auto* choose = new QPushButton(tr("选择模型文件"));
    choose->setObjectName(QStringLiteral("pushButton_choose_model"));
    connect(choose, &QPushButton::clicked, this, &ModelsDialog::chooseFiles);
    auto* head = new QHBoxLayout;
    head->addWidget(model_, 1);
    head->addWidget(choose);

    auto* testRow = new QHBoxLayout;
    testRow->addWidget(new QLabel(tr("标签")));
    testRow->addWidget(labels_, 1);
    testRow->addWidget(new QLabel(tr("最小概率")));
    testRow->addWidget(probability_);
    testRow->addWidget(new QLabel(tr("原图")));
    testRow->addWidget(originals_, 1);
    auto* run = new QPushButton(tr("测试"));
    run->setObjectName(QStringLiteral("pushButton_test"));
    connect(run, &QPushButton::clicked, this, &ModelsDialog::test);
    testRow->addWidget(run);

    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    close->button(QDialogButtonBox::Close)->setText(tr("关闭"));
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addLayout(testRow);
    layout->addWidget(view_, 1);
    layout->addWidget(verdict_);
    layout->addWidget(close);
    connect(&editor_, &TaskEditor::settingsChanged, this, &ModelsDialog::showModel);
    showModel();
    resize(860, 600);
    nameControlsAfterText(*this);
}

void ModelsDialog::showModel() {
    model::TaskDocument& task = editor_.document();
    QStringList names;
    for (int id = 0; const auto name = task.labelName(id); ++id) {
        names << *name;
    }
    // The names of a model chosen earlier are read here, as the form's label lists need them.
    if (names.isEmpty() && !task.modelId.isEmpty()) {
        names = readNames(recognition::labelModelFiles(task.folderPath, task.modelId).names);
        task.setLabelNames(names);
    }
    model_->setText(task.modelId.isEmpty()
                        ? tr("没有模型")
                        : tr("模型 %1，标签数：%2").arg(task.modelId).arg(names.size()));
    model_->setAccessibleName(model_->text());
    labels_->clear();
    labels_->addItems(names);
}

void ModelsDialog::chooseFiles() {
    recognition::LabelModelFiles chosen;
    chosen.weights =
        QFileDialog::getOpenFileName(this, tr("权重文件"), QString(), tr("权重 (*.weights)"));
    if (chosen.weights.isEmpty()) {
        return;
    }
    const QString stem = QFileInfo(chosen.weights).path() + QLatin1Char('/') +
                         QFileInfo(chosen.weights).completeBaseName();
    chosen.configuration =
        QFileDialog::getOpenFileName(this, tr("配置文件"), stem + ".cfg", tr("配置 (*.cfg)"));
    chosen.names = QFileDialog::getOpenFileName(this, tr("标签名文件"), stem + ".names",
                                                tr("标签名 (*.names)"));
    if (chosen.configuration.isEmpty() || chosen.names.isEmpty()) {
        return;
    }
    if (const QString error = useModel(chosen); !error.isEmpty()) {
        showNotice(this, error);
    }
}

QString ModelsDialog::useModel(const recognition::LabelModelFiles& chosen) {
    model::TaskDocument& task = editor_.document();
    const QString id = QFileInfo(chosen.weights).completeBaseName();
    const recognition::LabelModelFiles target = recognition::labelModelFiles(task.folderPath, id);
    if (target.weights.isEmpty() || !QDir(task.folderPath).mkpath(QStringLiteral("model"))) {
        return tr("模型名不可用：%1").arg(id);
    }
    for (const auto& [from, to] :
         {std::pair{chosen.configuration, target.configuration},
          std::pair{chosen.weights, target.weights}, std::pair{chosen.names, target.names}}) {
        if (QString error = copyInto(from, to); !error.isEmpty()) {
            return error;
        }
    }
    recognition::LabelDetector detector;
    if (!detector.load(target)) {
        return tr("模型文件无法读取：%1").arg(id);
    }
    editor_.changeModel(id, readNames(target.names));
    return {};
}

void ModelsDialog::test() {
    model::EditorLabelCondition condition;
    condition.labelId = labels_->currentIndex();
    condition.sim = float(probability_->value());
    const cv::Mat frame =
        cv::imread(originals_->currentData().toString().toStdString(), cv::IMREAD_COLOR);
    probe::ConditionProbe probe(editor_.document());
    const probe::ProbeResult result = probe.run(condition, frame);
    view_->show(frame.empty() ? QImage()
                              : QImage(frame.data, frame.cols, frame.rows, int(frame.step),
                                       QImage::Format_BGR888)
                                    .copy(),
                result);
    verdict_->setText(result.holds ? tr("找到的框：%1").arg(result.candidates.size())
                                   : tr("没有找到：%1").arg(result.reason));
    verdict_->setAccessibleName(verdict_->text());
}

}  // namespace autoscene::ui

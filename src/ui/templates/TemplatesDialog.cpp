#include "ui/templates/TemplatesDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <opencv2/imgcodecs.hpp>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "editor/ResourceUsers.h"
#include "editor/TaskEditor.h"
#include "model/TaskImages.h"
#include "probe/ConditionProbe.h"

namespace autoscene::ui {

namespace {

QPushButton* addButton(const QString& text, const char* objectName, QBoxLayout& row) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(objectName));
    row.addWidget(button);
    return button;
}

}  // namespace

TemplatesDialog::TemplatesDialog(TaskEditor& editor, QWidget* parent)
    : QDialog(parent),
      editor_(editor),
      list_(new QTreeWidget),
      originals_(new QComboBox),
      preview_(new QLabel),
      users_(new QListWidget),
      hint_(new QLabel) {
    setObjectName(QStringLiteral("TemplatesDialog"));
    setWindowTitle(tr("图片"));
    list_->setObjectName(QStringLiteral("treeWidget_images"));
    list_->setAccessibleName(tr("图片"));
    list_->setHeaderLabels({tr("名称"), tr("使用次数"), tr("文件"), tr("范围")});
    list_->setRootIsDecorated(false);
    list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    originals_->setObjectName(QStringLiteral("comboBox_original"));
    originals_->setAccessibleName(tr("原图"));
    const QDir folder(model::originalsFolder(editor_.document()));
    for (const QString& file :
         folder.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name)) {
        originals_->addItem(file, folder.filePath(file));
    }
    preview_->setObjectName(QStringLiteral("label_preview"));
    preview_->setAccessibleName(tr("预览"));
    preview_->setMinimumSize(160, 100);
    preview_->setAlignment(Qt::AlignCenter);
    users_->setObjectName(QStringLiteral("listWidget_users"));
    users_->setAccessibleName(tr("使用者"));
    hint_->setObjectName(QStringLiteral("label_uniqueness"));
    hint_->setWordWrap(true);

    auto* details = new QFormLayout;
    details->addRow(tr("预览"), preview_);
    details->addRow(tr("使用者"), users_);
    details->addRow(tr("原图"), originals_);
    details->addRow(tr("唯一性"), hint_);

    auto* buttons = new QHBoxLayout;
    connect(addButton(tr("重命名"), "pushButton_rename", *buttons), &QPushButton::clicked, this,
            &TemplatesDialog::askRename);
    connect(addButton(tr("从原图替换"), "pushButton_replace", *buttons), &QPushButton::clicked,
            this, &TemplatesDialog::replaceSelected);
    connect(addButton(tr("删除"), "pushButton_delete", *buttons), &QPushButton::clicked, this,
            &TemplatesDialog::removeSelected);
    buttons->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    close->button(QDialogButtonBox::Close)->setText(tr("关闭"));
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->addWidget(close);

    auto* body = new QHBoxLayout;
    body->addWidget(list_, 3);
    body->addLayout(details, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(buttons);

    connect(list_, &QTreeWidget::currentItemChanged, this, &TemplatesDialog::showSelected);
    connect(originals_, &QComboBox::currentIndexChanged, this, &TemplatesDialog::showSelected);
    connect(&editor_, &TaskEditor::resourcesChanged, this, &TemplatesDialog::refresh);
    refresh();
    resize(860, 520);
    nameControlsAfterText(*this);
}

int TemplatesDialog::selectedId() const {
    const QTreeWidgetItem* item = list_->currentItem();
    return item ? item->data(0, Qt::UserRole).toInt() : 0;
}

void TemplatesDialog::select(int id) {
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        if (list_->topLevelItem(row)->data(0, Qt::UserRole).toInt() == id) {
            list_->setCurrentItem(list_->topLevelItem(row));
        }
    }
}

void TemplatesDialog::refresh() {
    const int keep = selectedId();
    const QSignalBlocker quiet(list_);
    list_->clear();
    const model::TaskDocument& task = editor_.document();
    for (const model::ImageRecord& image : task.images) {
        const QRect& r = image.rect;
        auto* item = new QTreeWidgetItem(
            list_,
            {image.name, QString::number(describeUsers(task, model::Ref::Image, image.id).size()),
             image.file,
             QStringLiteral("%1,%2 %3×%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height())});
        item->setData(0, Qt::UserRole, image.id);
    }
    select(keep);
    if (!list_->currentItem() && list_->topLevelItemCount() > 0) {
        list_->setCurrentItem(list_->topLevelItem(0));
    }
    showSelected();
}

void TemplatesDialog::showSelected() {
    // A search still running for the image shown before would land on this one.
    uniqueness_.drop();
    users_->clear();
    preview_->clear();
    hint_->clear();
    const model::TaskDocument& task = editor_.document();
    const model::ImageRecord* image = task.image(selectedId());
    if (!image) {
        return;
    }
    users_->addItems(describeUsers(task, model::Ref::Image, image->id));
    const QImage pixels(model::imageFilePath(task, *image).value_or(QString()));
    if (pixels.isNull()) {
        preview_->setText(tr("图片文件不存在"));
    } else {
        preview_->setPixmap(QPixmap::fromImage(
            pixels.width() > 240 ? pixels.scaledToWidth(240, Qt::SmoothTransformation) : pixels));
    }
    const QString original = originals_->currentData().toString();
    if (original.isEmpty()) {
        hint_->setText(tr("没有原图"));
        return;
    }
    hint_->setText(tr("正在查找原图中的其他匹配…"));
    uniqueness_.ask(
        [search = probe::OtherMatches(
             task, image->id, cv::imread(original.toStdString(), cv::IMREAD_COLOR), image->rect)] {
            return search();
        },
        [this](const std::vector<probe::ProbeCandidate>& others) { showOtherMatches(others); });
}

void TemplatesDialog::showOtherMatches(const std::vector<probe::ProbeCandidate>& others) {
    QStringList places;
    for (const probe::ProbeCandidate& c : others) {
        places << tr("%1,%2（相似度 %3）")
                      .arg(c.rect.x())
                      .arg(c.rect.y())
                      .arg(double(c.score), 0, 'f', 2);
    }
    hint_->setText(others.empty() ? tr("在这张原图上只有一处达到阈值")
                                  : tr("在别处也达到阈值：%1").arg(places.join(tr("，"))));
    hint_->setAccessibleName(hint_->text());
}

void TemplatesDialog::askRename() {
    const model::ImageRecord* image = editor_.document().image(selectedId());
    if (!image) {
        return;
    }
    if (const std::optional<QString> name = askForText(this, tr("名称"), image->name)) {
        renameSelected(*name);
    }
}

bool TemplatesDialog::renameSelected(const QString& name) {
    const model::ImageRecord* image = editor_.document().image(selectedId());
    const QString trimmed = name.trimmed();
    if (!image || trimmed.isEmpty()) {
        return false;
    }
    for (const model::ImageRecord& other : editor_.document().images) {
        if (other.id != image->id && other.name == trimmed) {
            refuse(tr("已有名为 %1 的图片").arg(trimmed));
            return false;
        }
    }
    model::ImageRecord renamed = *image;
    renamed.name = trimmed;
    return editor_.replaceImage(std::move(renamed),
                                tr("重命名图片 %1 为 %2").arg(image->name, trimmed));
}

bool TemplatesDialog::replaceSelected() {
    const model::ImageRecord* image = editor_.document().image(selectedId());
    const QString original = originals_->currentData().toString();
    if (!image || original.isEmpty()) {
        return false;
    }
    const QImage screen(original);
    if (screen.isNull() || !screen.rect().contains(image->rect)) {
        refuse(tr("原图 %1 不包含图片的范围").arg(originals_->currentText()));
        return false;
    }
    const model::AddImageResult stored =
        model::storeNewImageFile(editor_.document(), screen.copy(image->rect));
    if (!stored.ok) {
        refuse(stored.error);
        return false;
    }
    model::ImageRecord replaced = *image;
    replaced.file = QFileInfo(stored.path).fileName();
    replaced.screenInfo.width = screen.width();
    replaced.screenInfo.height = screen.height();
    editor_.document().imageRects.insert(replaced.file, replaced.rect);
    return editor_.replaceImage(
        std::move(replaced),
        tr("从原图 %1 替换图片 %2").arg(originals_->currentText(), image->name));
}

bool TemplatesDialog::removeSelected() {
    const model::ImageRecord* image = editor_.document().image(selectedId());
    if (!image) {
        return false;
    }
    const QStringList users = describeUsers(editor_.document(), model::Ref::Image, image->id);
    if (!users.isEmpty()) {
        refuse(
            tr("图片 %1 正在使用，不能删除：\n%2").arg(image->name, users.join(QLatin1Char('\n'))));
        return false;
    }
    return editor_.removeImage(image->id);
}

void TemplatesDialog::refuse(const QString& why) {
    showNotice(this, why);
}

}  // namespace autoscene::ui

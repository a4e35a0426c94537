#include "screen/ScreenResources.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "editor/TaskEditor.h"
#include "model/TaskImages.h"
#include "probe/ConditionProbe.h"
#include "recognition/ColorSearch.h"

namespace autoscene::ui {

namespace {

template <class Record>
int nextId(const std::vector<Record>& records) {
    int id = 0;
    for (const Record& record : records) {
        id = std::max(id, record.id);
    }
    return id + 1;
}

// Files are named by the second they were made in; two cuts within one second take the
// next free second rather than losing the second cut to the file of the first.
std::function<qint64()> freeSecondIn(const QString& folder) {
    return [folder] {
        qint64 seconds = QDateTime::currentSecsSinceEpoch();
        while (QFileInfo::exists(folder + QStringLiteral("%1.png").arg(seconds))) {
            ++seconds;
        }
        return seconds;
    };
}

model::ScreenInfo screenOf(const QImage& picture) {
    model::ScreenInfo screen;
    screen.width = picture.width();
    screen.height = picture.height();
    return screen;
}

QString checkCut(const Cut& cut) {
    if (cut.name.trimmed().isEmpty()) {
        return QCoreApplication::translate("ScreenResources", "请输入名称");
    }
    if (cut.picture.isNull() || cut.rect.isEmpty() || !cut.picture.rect().contains(cut.rect)) {
        return QCoreApplication::translate("ScreenResources", "请在原图上框选一个区域");
    }
    return {};
}

// The picture as the matcher sees a frame: 3-channel BGR.
cv::Mat bgrOf(const QImage& picture) {
    const QImage rgb32 = picture.convertToFormat(QImage::Format_RGB32);
    const cv::Mat bgra(rgb32.height(), rgb32.width(), CV_8UC4, const_cast<uchar*>(rgb32.bits()),
                       size_t(rgb32.bytesPerLine()));
    cv::Mat bgr;
    cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
    return bgr;
}

}  // namespace

QImage loadOriginal(const model::TaskDocument& task, int id) {
    const auto found = std::find_if(task.originals.begin(), task.originals.end(),
                                    [id](const auto& original) { return original.id == id; });
    if (found == task.originals.end()) {
        return {};
    }
    const std::optional<QString> path = model::originalFilePath(task, *found);
    return path ? QImage(*path) : QImage();
}

SavedResource saveOriginal(TaskEditor& editor, const QImage& picture) {
    const model::TaskDocument& task = editor.document();
    if (picture.isNull()) {
        return {0, QCoreApplication::translate("ScreenResources", "截图失败！")};
    }
    QString file;
    const model::AddImageResult stored =
        model::storeOriginal(task, file, picture, freeSecondIn(model::originalsFolder(task)));
    if (!stored.ok) {
        return {0, stored.error};
    }
    const int id = nextId(task.originals);
    if (!editor.addOriginal({id, file})) {
        return {0, QCoreApplication::translate("ScreenResources", "任务运行中,不能修改")};
    }
    return {id, {}};
}

SavedResource saveTemplate(TaskEditor& editor, const Cut& cut) {
    if (const QString error = checkCut(cut); !error.isEmpty()) {
        return {0, error};
    }
    const model::TaskDocument& task = editor.document();
    if (std::any_of(task.images.begin(), task.images.end(),
                    [&](const auto& image) { return image.name == cut.name; })) {
        return {0, QCoreApplication::translate("ScreenResources", "已存在此名字的图片")};
    }
    model::ImageRecord image;
    image.id = nextId(task.images);
    image.name = cut.name;
    image.ori = cut.ori;
    image.rect = cut.rect;
    image.screenInfo = screenOf(cut.picture);
    // Stored as RGB32, which PNG keeps as three channels: templates with alpha never match.
    const model::AddImageResult stored = model::storeImage(task, image, cut.picture.copy(cut.rect),
                                                           freeSecondIn(model::imageFolder(task)));
    if (!stored.ok) {
        return {0, stored.error};
    }
    const int id = image.id;
    if (!editor.addImage(std::move(image))) {
        return {0, QCoreApplication::translate("ScreenResources", "任务运行中,不能修改")};
    }
    return {id, {}};
}

SavedResource saveArea(TaskEditor& editor, const Cut& cut) {
    if (const QString error = checkCut(cut); !error.isEmpty()) {
        return {0, error};
    }
    if (!editor.document().isDefinitionNameFree(cut.name)) {
        return {0, model::TaskDocument::duplicateDefinitionMessage()};
    }
    auto crop = model::EditorVariable::create<model::CropInfo>();
    crop->name = cut.name;
    crop->ori = cut.ori;
    crop->rect = cut.rect;
    crop->screenInfo = screenOf(cut.picture);
    const int id = crop->id;
    if (!editor.addDefinition(std::move(crop))) {
        return {0, QCoreApplication::translate("ScreenResources", "任务运行中,不能修改")};
    }
    return {id, {}};
}

SavedResource saveColour(TaskEditor& editor, const QString& name, std::int64_t rgb,
                         float similarity) {
    if (name.trimmed().isEmpty()) {
        return {0, QCoreApplication::translate("ScreenResources", "请输入名称")};
    }
    const int id = nextId(editor.document().colors);
    if (!editor.addColor({id, name, similarity, rgb & 0xFFFFFF})) {
        return {0, QCoreApplication::translate("ScreenResources", "任务运行中,不能修改")};
    }
    return {id, {}};
}

OtherMatchSearch matchElsewhere(const model::TaskDocument& task, int id, const QImage& picture) {
    const model::ImageRecord* image = task.image(id);
    if (!image || picture.isNull() || !picture.rect().contains(image->rect)) {
        return [] { return std::nullopt; };
    }
    return [search = probe::OtherMatches(task, id, bgrOf(picture), image->rect),
            similarity = image->sim]() -> std::optional<OtherMatch> {
        const std::vector<probe::ProbeCandidate> others = search();
        if (others.empty()) {
            return std::nullopt;
        }
        const auto best =
            std::max_element(others.begin(), others.end(),
                             [](const auto& a, const auto& b) { return a.score < b.score; });
        return OtherMatch{best->rect, best->score, similarity};
    };
}

QImage colourMask(const QImage& picture, std::int64_t rgb, float similarity) {
    if (picture.isNull()) {
        return {};
    }
    cv::Mat mask;
    recognition::filterColor(bgrOf(picture), rgb, similarity, mask);
    return QImage(mask.data, mask.cols, mask.rows, int(mask.step), QImage::Format_Grayscale8)
        .copy();
}

int colourCount(const QImage& picture, std::int64_t rgb, float similarity, const QRect& rect) {
    cv::Mat scratch;
    return recognition::countColor(bgrOf(picture), rgb, similarity, rect, scratch);
}

}  // namespace autoscene::ui

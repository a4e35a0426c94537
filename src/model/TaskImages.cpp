#include "model/TaskImages.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

namespace autoscene::model {

Q_LOGGING_CATEGORY(lcTaskImages, "autoscene.model.images")

namespace {

constexpr int kThumbnailWidth = 160;

QString timestampFileName(qint64 seconds) {
    return QStringLiteral("%1.png").arg(seconds);
}

// Writes the pixels as PNG into folder/name unless that file exists.
AddImageResult storePng(const QString& folder, const QString& fileName, const QImage& pixels) {
    AddImageResult result;
    if (!isPlainFileName(fileName)) {
        result.error = QStringLiteral("refused image file name \"%1\"").arg(fileName);
        return result;
    }
    if (!QDir().mkpath(folder)) {
        result.error = QStringLiteral("cannot create folder %1").arg(folder);
        return result;
    }
    result.path = QDir(folder).filePath(fileName);
    if (QFileInfo::exists(result.path)) {
        result.ok = true;
        return result;
    }
    const QImage rgb = pixels.format() == QImage::Format_RGB32
                           ? pixels
                           : pixels.convertToFormat(QImage::Format_RGB32);
    if (rgb.isNull() || !rgb.save(result.path, "PNG")) {
        result.error = QStringLiteral("cannot write %1").arg(result.path);
        return result;
    }
    result.ok = true;
    result.written = true;
    return result;
}

}  // namespace

bool isPlainFileName(const QString& name) {
    return !name.isEmpty() && name != QLatin1String(".") && !name.contains(QLatin1String("..")) &&
           !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) &&
           !name.contains(QLatin1Char(':')) && !name.contains(QChar(0)) &&
           !QDir::isAbsolutePath(name);
}

QString imageFolder(const TaskDocument& task) {
    return task.folderPath + QStringLiteral("image/");
}

QString originalsFolder(const TaskDocument& task) {
    return task.folderPath + QStringLiteral("ori/");
}

QString thumbnailFolder(const TaskDocument& task) {
    return originalsFolder(task) + QStringLiteral("Thumbnail/");
}

std::optional<QString> imageFilePath(const TaskDocument& task, const ImageRecord& image) {
    if (!isPlainFileName(image.file)) {
        return std::nullopt;
    }
    return imageFolder(task) + image.file;
}

std::optional<QString> originalFilePath(const TaskDocument& task,
                                        const OriginalImageRecord& original) {
    if (!isPlainFileName(original.name)) {
        return std::nullopt;
    }
    return originalsFolder(task) + original.name;
}

AddImageResult storeImage(const TaskDocument& task, ImageRecord& image, const QImage& pixels,
                          const std::function<qint64()>& secondsNow) {
    if (image.file.isEmpty()) {
        image.file = timestampFileName(secondsNow());
    }
    return storePng(imageFolder(task), image.file, pixels);
}

AddImageResult addImage(TaskDocument& task, ImageRecord image, const QImage& pixels,
                        const std::function<qint64()>& secondsNow) {
    AddImageResult result = storeImage(task, image, pixels, secondsNow);
    if (result.ok) {
        task.imageRects.insert(image.file, image.rect);
        task.images.push_back(std::move(image));
    }
    return result;
}

AddImageResult storeNewImageFile(const TaskDocument& task, const QImage& pixels,
                                 const std::function<qint64()>& secondsNow) {
    const qint64 seconds = secondsNow();
    const QDir folder(imageFolder(task));
    QString name = timestampFileName(seconds);
    for (int n = 2; QFileInfo::exists(folder.filePath(name)); ++n) {
        name = QStringLiteral("%1-%2.png").arg(seconds).arg(n);
    }
    return storePng(imageFolder(task), name, pixels);
}

AddImageResult storeOriginal(const TaskDocument& task, QString& fileName, const QImage& pixels,
                             const std::function<qint64()>& secondsNow) {
    if (fileName.isEmpty()) {
        fileName = timestampFileName(secondsNow());
    }
    AddImageResult result = storePng(originalsFolder(task), fileName, pixels);
    if (!result.ok) {
        return result;
    }
    qCDebug(lcTaskImages) << "oriImage path:" << result.path;
    if (result.written) {
        storePng(thumbnailFolder(task), fileName,
                 pixels.scaledToWidth(qMin(kThumbnailWidth, qMax(1, pixels.width())),
                                      Qt::SmoothTransformation));
    }
    return result;
}

AddImageResult addOriginal(TaskDocument& task, OriginalImageRecord original, QString fileName,
                           const QImage& pixels) {
    AddImageResult result = storeOriginal(task, fileName, pixels);
    if (result.ok) {
        task.originals.push_back(std::move(original));
    }
    return result;
}

}  // namespace autoscene::model

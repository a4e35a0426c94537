#pragma once
// Image files of a task: template images in image/, original screenshots in ori/
// with thumbnails in ori/Thumbnail/. No file is ever read or written outside the
// task folder, and an existing file is never overwritten.

#include <QDateTime>
#include <QImage>
#include <QString>
#include <functional>
#include <optional>

#include "model/TaskDocument.h"

namespace autoscene::model {

// True for a plain file name: not empty, not absolute, no "..", no separator.
bool isPlainFileName(const QString& name);

// Folders of the task, ending in "/".
QString imageFolder(const TaskDocument& task);
QString originalsFolder(const TaskDocument& task);
QString thumbnailFolder(const TaskDocument& task);

// The path of an image record's file, or nothing when its name is not plain.
std::optional<QString> imageFilePath(const TaskDocument& task, const ImageRecord& image);
// An original's picture is the file in ori/ named by the record's name; nothing when the
// name is not a plain file name.
std::optional<QString> originalFilePath(const TaskDocument& task,
                                        const OriginalImageRecord& original);

struct AddImageResult {
    bool ok = false;
    bool written = false;  // false when a file of that name already existed
    QString path;
    QString error;
};

// Names the record's file "<secondsNow()>.png" when it has none and stores the pixels as
// 32-bit RGB PNG unless the file exists; the task's lists stay as they are.
AddImageResult storeImage(
    const TaskDocument& task, ImageRecord& image, const QImage& pixels,
    const std::function<qint64()>& secondsNow = &QDateTime::currentSecsSinceEpoch);

// Appends the record (naming its file "<secondsNow()>.png" when it has none), stores
// the pixels as 32-bit RGB PNG unless the file exists, and remembers the rectangle
// under the file name. A file name that is not plain is refused.
AddImageResult addImage(
    TaskDocument& task, ImageRecord image, const QImage& pixels,
    const std::function<qint64()>& secondsNow = &QDateTime::currentSecsSinceEpoch);

// Stores the pixels in image/ under the first free name of "<secondsNow()>.png",
// "<secondsNow()>-2.png", ...: a file that replaces an image's pixels never overwrites the
// one that undo may bring back.
AddImageResult storeNewImageFile(
    const TaskDocument& task, const QImage& pixels,
    const std::function<qint64()>& secondsNow = &QDateTime::currentSecsSinceEpoch);

// Stores an original screenshot and its thumbnail, named like images, without recording it.
AddImageResult storeOriginal(
    const TaskDocument& task, QString& fileName, const QImage& pixels,
    const std::function<qint64()>& secondsNow = &QDateTime::currentSecsSinceEpoch);

// Stores an original screenshot and its thumbnail, named like images.
AddImageResult addOriginal(TaskDocument& task, OriginalImageRecord original, QString fileName,
                           const QImage& pixels);

}  // namespace autoscene::model

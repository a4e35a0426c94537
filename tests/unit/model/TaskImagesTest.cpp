// Image files of a task: naming, no overwrite, conversion, refused names.

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "model/TaskImages.h"

using namespace autoscene::model;

namespace {

class TaskImages : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(task.openFolder(dir.filePath("task")).ok);
        red.fill(Qt::red);
        blue.fill(Qt::blue);
    }

    QTemporaryDir dir;
    TaskDocument task;
    QImage red{8, 6, QImage::Format_RGB888};
    QImage blue{8, 6, QImage::Format_ARGB32};
};

TEST_F(TaskImages, UnnamedImagesAreNamedByTheSecondAndTheFirstPixelsStay) {
    qint64 seconds = 1767600000;
    const auto clock = [&seconds] { return seconds; };
    ImageRecord first;
    first.rect = QRect(1, 2, 8, 6);
    const AddImageResult a = addImage(task, first, red, clock);
    EXPECT_EQ(task.imageRects.value(QStringLiteral("1767600000.png")), QRect(1, 2, 8, 6));
    const AddImageResult b = addImage(task, ImageRecord{}, blue, clock);
    ++seconds;
    const AddImageResult c = addImage(task, ImageRecord{}, blue, clock);
    ASSERT_TRUE(a.ok && b.ok && c.ok);
    EXPECT_EQ(std::tuple(a.written, b.written, c.written), std::tuple(true, false, true));
    EXPECT_EQ(a.path, task.folderPath + "image/1767600000.png");
    EXPECT_EQ(b.path, a.path);
    EXPECT_EQ(QStringList({task.images[1].file, task.images[2].file}),
              QStringList({"1767600000.png", "1767600001.png"}));
    EXPECT_EQ(QImage(a.path).pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(QImage(c.path).pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(TaskImages, NamesThatLeaveTheFolderAreRefused) {
    for (const char* name :
         {"../escape.png", "/tmp/abs.png", "sub/dir.png", "a\\b.png", "..", "C:evil.png"}) {
        ImageRecord record;
        record.file = QString::fromUtf8(name);
        const AddImageResult result = addImage(task, record, red);
        EXPECT_TRUE(result.error.contains("refused")) << name;
        EXPECT_FALSE(imageFilePath(task, record).has_value()) << name;
    }
    EXPECT_TRUE(task.images.empty());
    EXPECT_FALSE(QFile::exists(dir.filePath("escape.png")));
}

TEST_F(TaskImages, PixelsAreStoredAsRgb32PngAndOriginalsGetAThumbnail) {
    ImageRecord record;
    record.file = QStringLiteral("given.png");
    ASSERT_TRUE(addImage(task, record, red).written);
    const QImage stored(imageFolder(task) + "given.png");
    EXPECT_EQ(stored.size(), QSize(8, 6));
    EXPECT_EQ(stored.pixelColor(7, 5), QColor(Qt::red));

    QImage big(800, 400, QImage::Format_RGB32);
    big.fill(Qt::yellow);
    ASSERT_TRUE(
        addOriginal(task, OriginalImageRecord{5, QStringLiteral("shot")}, "ori.png", big).ok);
    EXPECT_EQ(QImage(originalsFolder(task) + "ori.png").size(), QSize(800, 400));
    EXPECT_EQ(QImage(thumbnailFolder(task) + "ori.png").width(), 160);
    EXPECT_EQ(task.originals.at(0).id, 5);
}

}  // namespace

// The files of recordings: pruning a folder of them, and a disk that refuses to write.

#include <gtest/gtest.h>
#include <utime.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <ctime>

#include "LogCapture.h"
#include "TestFiles.h"
#include "playback/RecordingPruning.h"
#include "playback/RecordingWriter.h"

using autoscene::ocr::testkit::LogCapture;
using namespace autoscene::playback;

namespace {

TEST(RecordingPruning, DeletesTheOldestUntilCountAndSizeFit) {
    // {limits, the recording being written, the folders left}
    const std::tuple<RecordingLimits, QString, QStringList> cases[] = {
        {{3, 0}, {}, {"notes", "r2", "r3", "r4"}},
        {{0, 250}, {}, {"notes", "r3", "r4"}},
        {{10, 1000}, {}, {"notes", "r0", "r1", "r2", "r3", "r4"}},
        {{1, 0}, "r0", {"notes", "r0"}},  // the one being written stays and counts
    };
    for (const auto& [limits, keep, left] : cases) {
        // Recordings "r0" (oldest) to "r4" of 100 bytes each, beside a folder that is not one.
        QTemporaryDir root;
        for (int i = 0; i < 5; ++i) {
            const QString file = root.filePath(QStringLiteral("r%1/cycles.jsonl").arg(i));
            QDir().mkpath(QFileInfo(file).path());
            autoscene::test::writeFile(file, QByteArray(100, 'x'));
            const utimbuf times{std::time(nullptr) - 1000 + i, std::time(nullptr) - 1000 + i};
            ::utime(file.toLocal8Bit().constData(), &times);
        }
        QDir().mkpath(root.filePath("notes"));
        pruneRecordings(root.path(), limits, keep.isEmpty() ? QString() : root.filePath(keep));
        EXPECT_EQ(QDir(root.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), left)
            << limits.maxCount << " " << limits.maxBytes;
    }
}

TEST(RecordingWriter, AFullDiskStopsTheRecordingWithOneMessage) {
    if (!QFile::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    QTemporaryDir folder;
    ASSERT_TRUE(QFile::link("/dev/full", folder.filePath("cycles.jsonl")));
    LogCapture log;
    {
        QString error;
        auto writer = RecordingWriter::open(folder.path(), &error);
        ASSERT_TRUE(writer) << error.toStdString();
        for (int i = 0; i < 5; ++i) {
            writer->addLine({{"cycle", i}});
        }
    }
    EXPECT_EQ(log.count("recording stopped, the run goes on"), 1) << log.all().toStdString();
}

}  // namespace

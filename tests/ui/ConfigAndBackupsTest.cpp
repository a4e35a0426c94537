#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "TestFiles.h"
#include "ui/AppConfig.h"
#include "ui/TaskBackups.h"

using autoscene::test::readFile;
using autoscene::test::writeFile;
using autoscene::ui::AppConfig;

namespace {

// Not a size, an empty size or a negative number: the default is in force.
TEST(AppConfig, UnreadableValuesGiveTheDefaultsAndTheLatestRecentTaskComesFirstOnce) {
    QTemporaryDir dir;
    const QString path = dir.filePath("config.ini");
    writeFile(path,
              "mainwindow_size=wide\nlauncher_size=0x300\nplayback_keep=5\nplayback_max_mb=-1\n");
    const AppConfig config(path);
    EXPECT_FALSE(config.mainWindowSize() || config.launcherSize());
    EXPECT_EQ(config.playbackLimits().maxCount, 5);
    EXPECT_EQ(config.playbackLimits().maxBytes,
              AppConfig(dir.filePath("none.ini")).playbackLimits().maxBytes);
    for (const char* task : {"/a", "/b", "/a"}) {
        AppConfig(path).addRecentTask(task);
    }
    EXPECT_EQ(AppConfig(path).recentTasks(), QStringList({"/a", "/b"}));
}

class Backups : public ::testing::Test {
protected:
    void SetUp() override { writeFile(script(), R"({"name": "first"})"); }

    // Backups named a minute apart from the `first`th minute on, each modified a minute
    // earlier than the one named before it: pruning must go by the files' times.
    void fillBackups(int count, int first = 0) {
        const QDateTime start = QDateTime::currentDateTime().addDays(-1);
        for (int i = first; i < first + count; ++i) {
            const QString copy =
                autoscene::ui::backUpScript(script(), folder(), start.addSecs(60LL * i));
            QFile file(copy);
            ASSERT_TRUE(file.open(QIODevice::ReadWrite));
            ASSERT_TRUE(
                file.setFileTime(start.addSecs(-60LL * i), QFileDevice::FileModificationTime));
        }
    }

    QStringList backups() const {
        return QDir(folder()).entryList({"*.json"}, QDir::Files, QDir::Name);
    }

    QString script() const { return task_.filePath("script.json"); }
    QString folder() const { return task_.filePath("backup"); }

    QTemporaryDir task_;
};

TEST_F(Backups, CopyIsNamedAfterTheLocalTimeAndTheFirstOfASecondIsKept) {
    const QDateTime when(QDate(2024, 3, 5), QTime(7, 8, 9));
    const QString copy = autoscene::ui::backUpScript(script(), folder(), when);
    EXPECT_EQ(QFileInfo(copy).fileName(), "script_20240305_070809.json");
    writeFile(script(), R"({"name": "second"})");
    EXPECT_TRUE(autoscene::ui::backUpScript(script(), folder(), when).isEmpty());
    EXPECT_EQ(readFile(copy), R"({"name": "first"})");
    EXPECT_TRUE(autoscene::ui::backUpScript(task_.filePath("missing.json"), folder()).isEmpty());
}

TEST_F(Backups, PruningWaitsForFiftyThenKeepsTheThirtyNewest) {
    fillBackups(49);
    EXPECT_EQ(autoscene::ui::pruneBackups(folder()), 0);
    fillBackups(1, 49);
    const QStringList before = backups();
    EXPECT_EQ(autoscene::ui::pruneBackups(folder()), 20);
    // Modification times run against the names: the newest thirty are the first names.
    EXPECT_EQ(backups(), before.mid(0, 30));
    // Thirty is below the threshold again.
    EXPECT_EQ(autoscene::ui::pruneBackups(folder()), 0);
}

}  // namespace

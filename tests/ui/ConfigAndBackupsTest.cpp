#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <optional>

#include "TestFiles.h"
#include "ui/AppConfig.h"
#include "ui/TaskBackups.h"

using autoscene::test::readFile;
using autoscene::test::writeFile;
using autoscene::ui::AppConfig;

namespace {

// Every setting on one line; "-" for a size that is not there.
QString settings(const AppConfig& c) {
    const auto size = [](std::optional<QSize> s) {
        return s ? QStringLiteral("%1x%2").arg(s->width()).arg(s->height()) : QString("-");
    };
    return QStringLiteral("%1 %2 %3 loop %4 playback %5 keep %6 %7MB %8 %9 recent %10")
        .arg(c.captureKey(), c.startKey(), c.stopKey())
        .arg(c.loopMode())
        .arg(c.playback())
        .arg(c.playbackLimits().maxCount)
        .arg(c.playbackLimits().maxBytes >> 20)
        .arg(size(c.mainWindowSize()), size(c.launcherSize()), c.recentTasks().join(','));
}

// A negative size is the default too.
TEST(AppConfig, MissingOrUnreadableValuesGiveTheDefaults) {
    QTemporaryDir dir;
    const QString path = dir.filePath("config.ini");
    writeFile(path,
              "mainwindow_size=wide\nlauncher_size=0x300\nplayback_keep=5\nplayback_max_mb=-1\n");
    EXPECT_EQ(settings(AppConfig(path)),
              "Alt+Shift+S F8 F10 loop 0 playback 1 keep 5 2048MB - - recent ");
}

TEST(AppConfig, WritesAtOnceAndReadsBackInAnotherInstance) {
    QTemporaryDir dir;
    const QString path = dir.filePath("sub/config.ini");
    AppConfig(path).setHotKeys("Ctrl+F1", "F5", "Shift+F6");
    AppConfig(path).setLoopMode(2);
    AppConfig(path).setPlayback(false);
    AppConfig(path).setMainWindowSize(QSize(1024, 700));
    for (const char* task : {"/a", "/b", "/a"}) {
        AppConfig(path).addRecentTask(task);
    }
    // The latest recent task first, once.
    EXPECT_EQ(settings(AppConfig(path)),
              "Ctrl+F1 F5 Shift+F6 loop 2 playback 0 keep 100 2048MB 1024x700 - recent /a,/b");
    const QByteArray text = readFile(path);
    EXPECT_TRUE(text.contains("mainwindow_size=1024x700")) << text.constData();
    // QSettings files ungrouped keys under [General].
    EXPECT_TRUE(text.startsWith("[General]\n")) << text.constData();
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

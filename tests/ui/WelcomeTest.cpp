#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QLocale>
#include <QTranslator>

#include "ModalAnswer.h"
#include "TestTask.h"
#include "ui/AutoRunner.h"
#include "ui/MainWindow.h"
#include "ui/SceneListView.h"
#include "ui/Translations.h"

namespace autoscene::testing {
namespace {

TEST(Welcome, OpensOrCreatesATaskInItsMainWindowOrSaysWhyNotAndStays) {
    const TestTask task;
    const auto config = [&] { return ui::AppConfig(task.configPath()); };
    ui::AutoRunner welcome(config(), {});
    welcome.show();
    QTemporaryDir empty;
    ui::MainWindow* opened = nullptr;
    const ModalSeen notice = answerModal([&] { opened = welcome.openTask(empty.path()); }, "确定");
    EXPECT_FALSE(opened);
    EXPECT_TRUE(notice.text.contains(empty.path())) << notice.text.toStdString();
    EXPECT_TRUE(welcome.isVisible());
    EXPECT_TRUE(config().recentTasks().isEmpty());

    std::unique_ptr<ui::MainWindow> window(welcome.openTask(task.path()));
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(welcome.isVisible());
    const QString path = QFileInfo(task.path()).absoluteFilePath();
    EXPECT_EQ(config().recentTasks(), QStringList(path));
    ui::AutoRunner again(config(), {});
    auto* recent = again.findChild<QListWidget*>("listWidget_recent");
    ASSERT_TRUE(recent && recent->count() == 1);
    EXPECT_EQ(recent->item(0)->text(), path);

    const QString folder = empty.filePath("new/task");
    window.reset(again.createTask(folder));
    ASSERT_TRUE(window);
    EXPECT_TRUE(QFileInfo(folder + "/script.json").isFile());
    EXPECT_EQ(window->editor().sceneRows(), 3);
}

TEST(Translation, OtherLocalesGetEnglishChineseKeepsItsTexts) {
    auto& app = *qobject_cast<QApplication*>(QCoreApplication::instance());
    EXPECT_FALSE(ui::installTranslation(app, QLocale(QLocale::Chinese, QLocale::China)));

    QTranslator* english = ui::installTranslation(app, QLocale(QLocale::German));
    ASSERT_TRUE(english);
    TestTask task;
    ui::MainWindow window{ui::AppConfig(task.configPath()), {}};
    QString error;
    ASSERT_TRUE(window.openTask(task.path(), &error));
    QApplication::removeTranslator(english);
    delete english;

    EXPECT_EQ(window.findChild<QAction*>("action_run")->text(), "Run");
    EXPECT_EQ(window.findChild<QWidget*>("label_wintitle")->accessibleName(), "Autoscene Demo");
    EXPECT_EQ(window.sceneList().model()->index(0, 0).data().toString(), "通用事件")
        << "scene names are the task's own, never translated";
}

}  // namespace
}  // namespace autoscene::testing

#include <QAbstractButton>
#include <QAction>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>

#include "EventForms.h"
#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "ui/TaskBackups.h"

namespace autoscene::testing {
namespace {

using MainWindowRules = MainWindowTest;

TEST_F(MainWindowRules, TargetLabelNamesTheTarget) {
    auto* label = window_->findChild<QLabel*>("label_wintitle");
    ASSERT_TRUE(label);
    task_.edit([](QJsonObject& root) {
        root["task_mode"] = 2;
        root["window_info"] = QJsonObject{{"title", ""}};
    });
    reopen();
    EXPECT_EQ(label->text(), "未选择目标窗口");
    targetMenu(2)->trigger();
    EXPECT_EQ(label->text(), "全屏模式");
    EXPECT_EQ(window_->editor().document().settings.taskMode, 1);
}

TEST_F(MainWindowRules, WindowInformationIsShownEditedAndMustNameAWindow) {
    QStringList shown;
    const auto edit = [&](QWidget& dialog, const QString& title) {
        const auto field = [&](const char* name) { return dialog.findChild<QLineEdit*>(name); };
        shown = {field("lineEdit_title")->text(), field("lineEdit_class_name")->text(),
                 QString::number(dialog.findChild<QSpinBox*>("spinBox_width")->value())};
        fill(dialog, {{"lineEdit_title", title},
                      {"lineEdit_class_name", {}},
                      {"spinBox_height", "480"},
                      {"checkBox_fullmatch_title", "0"}});
    };
    const auto entry = [&] { targetMenu(3)->trigger(); };
    // The refusal is a box over the dialog, which stays open; then Cancel.
    answerModals(entry, {{"取消", {}, [&](QWidget& dialog) {
                              edit(dialog, {});
                              auto* ok = dialog.findChild<QDialogButtonBox*>()->buttons()[0];
                              EXPECT_EQ(answerModal([&] { ok->click(); }, "确定").text,
                                        "请先选择窗口信息");
                          }}});
    EXPECT_EQ(shown, QStringList({"Autoscene Demo", "AutosceneDemo", "800"}));
    EXPECT_EQ(window_->editor().document().settings.windowInfo.title, "Autoscene Demo");

    answerModals(entry, {{"确定", {}, [&](QWidget& dialog) { edit(dialog, "Demo"); }}});
    const model::WindowInfo& info = window_->editor().document().settings.windowInfo;
    EXPECT_EQ(std::tuple(info.title, info.className, info.isFullmatchTitle, info.height),
              std::tuple("Demo", "", false, 480));
    EXPECT_EQ(window_->findChild<QLabel*>("label_wintitle")->text(), "Demo");
}

TEST_F(MainWindowRules, EveryControlIsNamedAfterItsText) {
    for (QWidget* widget : window_->findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        QString shown;
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            shown = button->text();
        } else if (auto* label = qobject_cast<QLabel*>(widget)) {
            shown = label->text();
        }
        if (!shown.isEmpty()) {
            EXPECT_EQ(widget->accessibleName(), shown) << widget->metaObject()->className();
        }
    }
    EXPECT_FALSE(window_->findChild<QWidget*>("listView_scene")->accessibleName().isEmpty());
    EXPECT_FALSE(window_->findChild<QWidget*>("treeWidget_event")->accessibleName().isEmpty());
}

TEST_F(MainWindowRules, ClosingAfterAFailedSaveAsks) {
    // A file where the task folder was: no save can succeed, not even as root.
    ASSERT_TRUE(task_.folder().removeRecursively());
    test::writeFile(task_.path(), {});

    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    const ModalSeen failure = answerModal(
        [&] { QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier); }, "确定");
    EXPECT_TRUE(failure.text.startsWith("保存失败")) << failure.text.toStdString();

    EXPECT_EQ(answerModal([&] { window_->close(); }, "取消").text,
              "任务可能保存失败,关闭后将导致任务异常,请确认是否关闭?");
    EXPECT_TRUE(window_->isVisible());

    answerModal([&] { window_->close(); }, "确定");
    EXPECT_FALSE(window_->isVisible());
    QFile::remove(task_.path());
}

TEST_F(MainWindowRules, OpeningBacksTheTaskUpAndClosingPrunesAndKeepsTheSize) {
    ASSERT_EQ(QDir(window_->backupFolder()).entryList({"script_*.json"}).size(), 1);

    const QDateTime start = QDateTime::currentDateTime().addDays(-2);
    for (int i = 0; i < 55; ++i) {
        ui::backUpScript(task_.folder().filePath("script.json"), window_->backupFolder(),
                         start.addSecs(i));
    }
    window_->resize(900, 620);
    EXPECT_FALSE(answerModal([&] { window_->close(); }, "确定").shown);
    EXPECT_EQ(QDir(window_->backupFolder()).entryList({"*.json"}).size(), 30);
    EXPECT_EQ(ui::AppConfig(task_.configPath()).mainWindowSize(), window_->size());
}

}  // namespace
}  // namespace autoscene::testing

#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "ui/EventTree.h"

namespace autoscene::testing {
namespace {

using SceneList = MainWindowTest;

const QStringList kDemoScenes = {"通用事件", "通用事件(低)", "默认界面", "start",
                                 "menu",     "form",         "finish"};

// The texts of the context menu opened on `row`, in brackets where disabled.
QString contextMenu(ui::SceneListView& view, int row) {
    QStringList entries;
    withContextMenu(view, row, [&](QMenu& menu) {
        for (QAction* action : menu.actions()) {
            entries << (action->isEnabled() ? action->text() : '(' + action->text() + ')');
        }
    });
    return entries.join(' ');
}

// The fixed scenes come first, and neither their menu nor the operations change them.
TEST_F(SceneList, OperationsChangeOnlyTheTasksOwnScenes) {
    ui::SceneListView& view = window_->sceneList();
    EXPECT_EQ(contextMenu(view, 1), "新建界面 (复制) (重命名) (上移) (下移) (删除)");
    EXPECT_EQ(contextMenu(view, 4), "新建界面 复制 重命名 上移 下移 删除");
    for (int row = 0; row < 3; ++row) {
        view.copyRow(row);
        EXPECT_FALSE(answerModal([&] { view.renameRow(row); }, "确定", "x").shown);
        EXPECT_FALSE(answerModal([&] { view.deleteRow(row); }, "确定").shown);
    }
    EXPECT_EQ(sceneNames(), kDemoScenes);
}

TEST_F(SceneList, CopyGoesAfterTheOriginalUnderAFreeName) {
    window_->sceneList().copyRow(3);
    window_->sceneList().copyRow(3);
    EXPECT_EQ(sceneNames().mid(3, 3), QStringList({"start", "start(2)", "start(1)"}));
    EXPECT_EQ(window_->sceneList().currentRow(), 4);
    const auto& scenes = window_->editor().document().scenes;
    EXPECT_EQ(scenes[1].events.size(), scenes[0].events.size());
}

TEST_F(SceneList, NewScenesTakeAFreeNameAndMoveWithinTheOwnScenes) {
    ui::SceneListView& view = window_->sceneList();
    answerModal([&] { view.addAfter(1); }, "确定", "新 界面");
    const auto refused = answerModals([&] { view.addAfter(4); }, {{"确定", "form"}, {"确定"}});
    EXPECT_EQ(refused[1].text, "界面名称为空或已存在");
    EXPECT_EQ(sceneNames().mid(3), QStringList({"新 界面", "start", "menu", "form", "finish"}));
    view.moveRow(3, 1);
    view.moveRow(3, -1);  // the fixed scenes stay first
    view.moveRow(7, 1);   // and nothing moves past the end
    EXPECT_EQ(sceneNames().mid(3), QStringList({"start", "新 界面", "menu", "form", "finish"}));
    window_->editor().undo();
    window_->editor().undo();
    EXPECT_EQ(sceneNames(), kDemoScenes);
}

TEST_F(SceneList, RenameAsksForAFreeNameAndDeleteAsksFirst) {
    ui::SceneListView& view = window_->sceneList();
    for (const QString& name : {QString("form"), QString("默认界面"), QString("  ")}) {
        const auto seen = answerModals([&] { view.renameRow(4); }, {{"确定", name}, {"确定"}});
        EXPECT_EQ(seen[1].text, "界面名称为空或已存在") << name.toStdString();
    }
    EXPECT_TRUE(answerModal([&] { view.renameRow(4); }, "取消", "other").shown);
    EXPECT_EQ(answerModal([&] { view.deleteRow(4); }, "取消").said(), "提示: 是否删除界面");
    EXPECT_EQ(sceneNames(), kDemoScenes);

    EXPECT_EQ(answerModal([&] { view.renameRow(4); }, "确定", "菜单").said(), "提示: 请输入新名称");
    EXPECT_EQ(sceneNames()[4], "菜单");
    answerModal([&] { view.deleteRow(4); }, "确定");
    QStringList expected = kDemoScenes;
    expected.removeAt(4);
    EXPECT_EQ(sceneNames(), expected);
    EXPECT_EQ(window_->editor().document().scenes.size(), 3u);
}

TEST_F(SceneList, EventTreeShowsTheSelectedScenesEventsWithTheirItems) {
    // Each event's row, then a row per condition and action.
    const auto rows = [&] { return rowTexts(*window_->eventTree().model()).join(" | "); };
    window_->sceneList().selectRow(3);
    EXPECT_EQ(rows(),
              "start button shown | 图片start button存在 | press start | "
              "鼠标左键点击图片:start button");
    window_->eventTree().selectRows({1});
    EXPECT_EQ(window_->eventTree().currentIndex().row(), 2);
    window_->sceneList().selectRow(0);
    EXPECT_EQ(rows(), "界面标识") << "the identification event only";
}

}  // namespace
}  // namespace autoscene::testing

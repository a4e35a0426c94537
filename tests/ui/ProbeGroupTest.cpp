// A group tested on the screen: its conditions' verdicts first, then what lies beyond the
// search areas of images not found in them.
#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QTest>

#include "TestTask.h"
#include "editor/EventEditor.h"
#include "editor/TaskEditor.h"
#include "model/EditorConditions.h"
#include "ui/probe/ProbePanel.h"

namespace autoscene::testing {
namespace {

TEST(ProbeGroup, ListsVerdictsFirstAndLooksBeyondTheAreasAfter) {
    TestTask task;
    task.folder().mkdir("ori");
    QImage screen(640, 480, QImage::Format_RGB32);
    screen.fill(QColor(90, 90, 90));
    QPainter(&screen).drawImage(220, 200, QImage(task.folder().filePath("image/1.png")));
    screen.save(task.folder().filePath("ori/a.png"));
    ui::TaskEditor editor;
    ASSERT_TRUE(editor.open(task.path()));

    model::EditorGroupCondition group;
    auto image = std::make_unique<model::EditorImageCondition>();
    image->imageId = 1;
    image->searchId = 7;  // smaller than the button, away from it
    group.append(image->clone());
    auto inner = std::make_unique<model::EditorGroupCondition>();
    image->searchId = 0;
    inner->append(std::move(image));
    group.append(std::move(inner));

    // With no condition chosen, the event editor asks for them all.
    model::EditorEvent event("e");
    for (const auto& member : group.items()) {
        event.conditions.append(member->clone());
    }
    ui::EventEditor events(editor.document(), std::move(event));
    const model::IEditorCondition* asked = nullptr;
    QObject::connect(
        &events, &ui::EventEditor::testRequested,
        [&](const model::IEditorCondition* c, const model::IEditorAction*) { asked = c; });
    events.testSelected();
    ASSERT_NE(asked, nullptr);
    EXPECT_EQ(asked->type(), model::EditorGroupCondition::kType);

    ui::ProbePanel panel(editor.document(), &group, nullptr, nullptr);
    panel.test();
    QListWidget& tested = panel.tested();
    ASSERT_EQ(tested.count(), 2);
    EXPECT_TRUE(tested.item(0)->text().endsWith("，正在查找范围外…"))
        << tested.item(0)->text().toStdString();
    EXPECT_TRUE(tested.item(1)->text().endsWith("：成立（阈值 0.90）"))
        << tested.item(1)->text().toStdString();
    EXPECT_TRUE(panel.result().lookingBeyond);
    EXPECT_EQ(panel.findChild<QListWidget*>("listWidget_candidates")->count(), 0);

    QTRY_VERIFY(!tested.item(0)->text().contains("正在查找"));
    EXPECT_TRUE(tested.item(0)->text().endsWith("不成立：图片大于查找范围（阈值 0.90）"))
        << tested.item(0)->text().toStdString();
    EXPECT_EQ(panel.findChild<QListWidget*>("listWidget_candidates")->item(0)->text(),
              "1.00  220,200 200×80（范围外）");
    tested.setCurrentRow(1);
    EXPECT_EQ(panel.findChild<QLabel*>("label_verdict")->text(), "成立（阈值 0.90）");
    EXPECT_EQ(panel.result().candidates.front().rect, QRect(220, 200, 200, 80));

    const model::EditorGroupCondition empty;
    ui::ProbePanel nothing(editor.document(), &empty, nullptr, nullptr);
    nothing.test();
    EXPECT_EQ(nothing.findChild<QLabel*>("label_verdict")->text(), "这个条件组里没有条件");
}

}  // namespace
}  // namespace autoscene::testing

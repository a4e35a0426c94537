// The test on the screen and the template images through their widgets, on the demo task
// with three originals: "a.png" holds the start button where it was cut, "b.png" only grey,
// "c.png" the words "Start Game".
#include <gtest/gtest.h>

#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>

#include "LoopbackPort.h"
#include "ModalAnswer.h"
#include "SharedOcrService.h"
#include "TestTask.h"
#include "editor/EventEditor.h"
#include "editor/TaskEditor.h"
#include "model/EditorConditions.h"
#include "model/TaskImages.h"
#include "recognition/LabelDetector.h"
#include "text/OcrClient.h"
#include "ui/probe/ProbeOcr.h"
#include "ui/probe/ProbePanel.h"
#include "ui/templates/ModelsDialog.h"
#include "ui/templates/TemplatesDialog.h"

namespace autoscene::testing {
namespace {

// The panel's verdict, then its best candidate if any.
QString shown(const ui::ProbePanel& panel) {
    auto* candidates = panel.findChild<QListWidget*>("listWidget_candidates");
    return panel.findChild<QLabel*>("label_verdict")->text() +
           (candidates->count() ? " | " + candidates->item(0)->text() : QString());
}

class ProbeAndTemplates : public ::testing::Test {
protected:
    void SetUp() override {
        task_.folder().mkdir("ori");
        for (const QString name : {"a.png", "b.png", "c.png"}) {
            QFile::copy(AUTOSCENE_FIXTURES "/ui/probe-originals/" + name,
                        task_.folder().filePath("ori/" + name));
        }
        ASSERT_TRUE(editor_.open(task_.path()));
    }

    TestTask task_;
    ui::TaskEditor editor_;
};

// A live frame of the target is captured off the window's thread, and a second test
// overtakes the first, whose grey frame is not shown whenever it comes.
TEST_F(ProbeAndTemplates, ProbePanelCapturesOffTheWindowsThreadAndShowsTheNewestFrame) {
    model::EditorImageCondition condition;
    condition.imageId = 1;
    int asked = 0;
    const auto target = [&] {
        const QString file = ++asked == 1 ? "ori/b.png" : "ori/a.png";
        return std::function<QImage()>([=, this] { return QImage(task_.folder().filePath(file)); });
    };
    ui::ProbePanel panel(editor_.document(), &condition, nullptr, nullptr, target);
    ASSERT_EQ(panel.source().itemText(0), "当前目标");
    panel.test();
    EXPECT_TRUE(panel.capturing());
    EXPECT_EQ(shown(panel), "正在截取画面…");
    panel.test();
    QTRY_VERIFY(!panel.capturing());
    QTest::qWait(500);
    EXPECT_EQ(shown(panel), "成立（阈值 0.90） | 1.00  220,200 200×80");
}

// A group's verdicts are listed first, then what lies beyond the search areas of images not
// found in them; the event editor with no condition chosen asks for them all.
TEST_F(ProbeAndTemplates, GroupListsVerdictsFirstAndLooksBeyondTheAreasAfter) {
    model::EditorImageCondition image;
    image.imageId = 1;
    image.searchId = 7;  // smaller than the button, away from it
    model::EditorEvent event("e");
    event.conditions.append(image.clone());
    image.searchId = 0;
    auto inner = std::make_unique<model::EditorGroupCondition>();
    inner->append(image.clone());
    event.conditions.append(std::move(inner));
    ui::EventEditor events(editor_.document(), event);
    const model::IEditorCondition* asked = nullptr;
    QObject::connect(
        &events, &ui::EventEditor::testRequested,
        [&](const model::IEditorCondition* c, const model::IEditorAction*) { asked = c; });
    events.testSelected();
    ASSERT_TRUE(asked && asked->type() == model::EditorGroupCondition::kType);

    ui::ProbePanel panel(editor_.document(), &event.conditions, nullptr, nullptr);
    panel.test();
    QListWidget& tested = panel.tested();
    const auto rows = [&] { return tested.item(0)->text() + " / " + tested.item(1)->text(); };
    ASSERT_EQ(tested.count(), 2);
    EXPECT_TRUE(
        QRegularExpression("，正在查找范围外… / .*：成立（阈值 0.90）$").match(rows()).hasMatch())
        << rows().toStdString();
    EXPECT_EQ(shown(panel).section(" | ", 1), "");
    QTRY_VERIFY(!rows().contains("正在查找"));
    EXPECT_TRUE(rows().contains("不成立：图片大于查找范围（阈值 0.90） / "))
        << rows().toStdString();
    EXPECT_EQ(shown(panel).section(" | ", 1), "1.00  220,200 200×80（范围外）");
    tested.setCurrentRow(1);
    EXPECT_EQ(shown(panel), "成立（阈值 0.90） | 1.00  220,200 200×80");

    const model::EditorGroupCondition empty;
    ui::ProbePanel nothing(editor_.document(), &empty, nullptr, nullptr);
    nothing.test();
    EXPECT_EQ(shown(nothing), "这个条件组里没有条件");
}

// Text is read by the recognition service a run uses; without it the verdict says so.
TEST_F(ProbeAndTemplates, TextConditionsReadWithTheRecognitionService) {
    model::EditorScreenTextCondition condition;
    condition.textInfo.value = "Start Game";
    for (const bool running : {true, false}) {
        ui::ProbeOcr ocr(std::make_shared<text::OcrClient>(
            running ? ocr::testkit::sharedOcrService().url()
                    : text::ocrServiceUrl(test::unusedLoopbackPort())));
        ui::ProbePanel panel(editor_.document(), &condition, nullptr, nullptr, {}, &ocr);
        panel.source().setCurrentIndex(2);  // c.png
        panel.test();
        EXPECT_EQ(panel.result().holds, running);
        // The verdict, then the text found; or why nothing could be read.
        EXPECT_TRUE(shown(panel).contains(
            running ? "成立 | Start Game "
                    : "文字识别服务没有运行或还在启动，读不到文字；请稍后再试"))
            << shown(panel).toStdString();
    }
}

TEST_F(ProbeAndTemplates, TemplatesAreRenamedReplacedAndKeptWhileUsed) {
    ui::TemplatesDialog dialog(editor_);
    dialog.select(1);
    EXPECT_EQ(dialog.list().currentItem()->text(1), "2");  // the condition and the click
    EXPECT_EQ(dialog.hint().text(), "正在查找原图中的其他匹配…");
    QTRY_COMPARE(dialog.hint().text(), QString("在这张原图上只有一处达到阈值"));

    ASSERT_TRUE(dialog.renameSelected("start"));
    EXPECT_EQ(editor_.document().image(1)->name, "start");
    // A name taken by another image is refused with a notice.
    EXPECT_TRUE(
        answerModal([&] { EXPECT_FALSE(dialog.renameSelected("done badge")); }, "确定").shown);

    const QString before = editor_.document().image(1)->file;
    dialog.originals().setCurrentIndex(1);  // b.png: grey where the button was
    ASSERT_TRUE(dialog.replaceSelected());
    const model::ImageRecord& replaced = *editor_.document().image(1);
    EXPECT_NE(replaced.file, before);
    EXPECT_EQ(QImage(*model::imageFilePath(editor_.document(), replaced)).pixelColor(5, 5),
              QColor(90, 90, 90));
    EXPECT_EQ(editor_.document().usersOf(model::Ref::Image, 1).size(), 2u);
    EXPECT_TRUE(QFile::exists(task_.folder().filePath("image/" + before)));

    EXPECT_TRUE(answerModal([&] { dialog.removeSelected(); }, "确定").text.contains("不能删除"));

    editor_.undo();
    editor_.undo();
    EXPECT_EQ(editor_.document().image(1)->file, before);
    EXPECT_EQ(editor_.document().image(1)->name, "start button");
}

TEST_F(ProbeAndTemplates, ChosenModelIsCopiedAndItsLabelTestedOnAnOriginal) {
    ui::ModelsDialog dialog(editor_);
    const auto tiny = recognition::labelModelFiles(AUTOSCENE_FIXTURES "/label-model", "tiny");
    ASSERT_EQ(dialog.useModel(tiny), QString());
    EXPECT_EQ(editor_.document().modelId, "tiny");
    EXPECT_TRUE(task_.folder().exists("model/tiny.weights"));
    ASSERT_EQ(dialog.labels().count(), 1);
    dialog.originals().setCurrentIndex(0);
    dialog.test();
    EXPECT_EQ(dialog.verdict().text(), "找到的框：1");
    editor_.undo();
    EXPECT_TRUE(editor_.document().modelId.isEmpty());
    EXPECT_EQ(dialog.labels().count(), 0);
}

}  // namespace
}  // namespace autoscene::testing

// The screen tools driven through their widgets on a drawn original: cuts land as the
// matcher reads them and as the task records them, the colour preview counts what the
// colour condition counts, and areas stay where they belong.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QWidget>

#include "TestTask.h"
#include "editor/TaskEditor.h"
#include "model/TaskImages.h"
#include "screen/OriginalView.h"
#include "screen/ScreenResources.h"
#include "screen/ScreenToolsDialog.h"

namespace autoscene::testing {
namespace {

using Mode = ui::ScreenToolsDialog::Mode;

class ScreenTools : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(editor_.open(task_.path()));
        const ui::SavedResource original = ui::saveOriginal(editor_, picture_);
        ASSERT_TRUE(original) << original.error.toStdString();
        originalId_ = original.id;
        dialog_ = std::make_unique<ui::ScreenToolsDialog>(editor_, [this] { return picture_; });
        dialog_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog_.get()));
        view().setZoom(2);
    }

    ui::OriginalView& view() { return dialog_->view(); }
    QPoint at(int x, int y) { return view().viewportRectOf(QRect(x, y, 1, 1)).center(); }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(view().viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(view().viewport(), to);
        QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, to);
    }
    template <class T>
    T* child(const char* name) {
        return dialog_->findChild<T*>(name);
    }
    void save(const QString& name) {
        child<QLineEdit>("lineEdit_name")->setText(name);
        child<QPushButton>("pushButton_save")->click();
    }
    QString message() { return child<QLabel>("label_message")->text(); }

    TestTask task_;
    ui::TaskEditor editor_;
    // 200x150 grey; red 30x20 at 10,10; (235,0,0) 10x10 at 60,10; blue 50x40 at 100,80; yellow
    // 20x12 with black 6x4 inset by 4 at 10,100 and at 150,20.
    QImage picture_{AUTOSCENE_FIXTURES "/ui/screen-tools-original.png"};
    int originalId_ = 0;
    std::unique_ptr<ui::ScreenToolsDialog> dialog_;
};

TEST_F(ScreenTools, CutTemplateIsAThreeChannelPngWithItsRecord) {
    drag(at(10, 10), at(39, 29));
    EXPECT_EQ(view().selection(), QRect(10, 10, 30, 20));
    EXPECT_EQ(child<QSpinBox>("spinBox_width")->value(), 30);
    // A handle moves one edge to the pixel; typed values move the rectangle.
    drag(at(40, 20) - QPoint(1, 0), at(44, 20));
    EXPECT_EQ(view().selection(), QRect(10, 10, 35, 20));
    child<QSpinBox>("spinBox_width")->setValue(30);
    EXPECT_EQ(view().selection(), QRect(10, 10, 30, 20));

    const size_t before = editor_.document().images.size();
    save("red block");
    ASSERT_EQ(editor_.document().images.size(), before + 1) << message().toStdString();
    const model::ImageRecord image = editor_.document().images.back();
    EXPECT_EQ(std::tuple(image.ori, image.rect, image.screenInfo.width, image.screenInfo.height),
              std::tuple(originalId_, QRect(10, 10, 30, 20), 200, 150));
    QFile file(*model::imageFilePath(editor_.document(), image));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(26).at(25), 2) << "PNG colour type: RGB, no alpha";
    EXPECT_EQ(QImage(file.fileName()).convertToFormat(QImage::Format_RGB32),
              picture_.copy(image.rect));

    save("red block");
    EXPECT_EQ(editor_.document().images.size(), before + 1);
    EXPECT_EQ(message(), "已存在此名字的图片");

    // Undo takes the record out and keeps the file.
    editor_.undo();
    EXPECT_EQ(editor_.document().images.size(), before);
    EXPECT_TRUE(file.exists());
}

// The search runs off the window's thread; only the newest one's answer, for the picture
// still shown, is drawn, and closing does not wait for it.
TEST_F(ScreenTools, ATemplateThatAlsoMatchesElsewhereIsPointedOut) {
    view().setSelection({8, 98, 24, 16});
    save("pattern");
    EXPECT_TRUE(dialog_->searching());
    save("pattern again");
    QTRY_VERIFY(!dialog_->searching());
    EXPECT_TRUE(message().contains("pattern again") && message().contains("(148, 18)"))
        << message().toStdString();
    EXPECT_EQ(view().overlays().back().rect, QRect(148, 18, 24, 16));

    // Another picture shown before the answer: the answer is not drawn on it.
    QImage plain(200, 150, QImage::Format_RGB32);
    plain.fill(Qt::green);
    const ui::SavedResource green = ui::saveOriginal(editor_, plain);
    view().setSelection({8, 98, 24, 16});
    save("pattern third");
    ASSERT_TRUE(dialog_->showOriginal(green.id));
    QTest::qWait(300);
    EXPECT_FALSE(message().contains("(148, 18)")) << message().toStdString();
    EXPECT_TRUE(view().overlays().empty());

    view().setSelection({8, 98, 24, 16});
    save("pattern fourth");
    dialog_.reset();
    QTest::qWait(300);
}

TEST_F(ScreenTools, ColourPreviewCountsWhatTheColourConditionCounts) {
    dialog_->setMode(Mode::Colour);
    auto* count = child<QLabel>("label_count");
    auto* similarity = child<QDoubleSpinBox>("doubleSpinBox_sim");
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, at(20, 15));
    // 20 off red is within (1 - 0.9) x 255 but not within (1 - 0.95) x 255.
    similarity->setValue(0.95);
    EXPECT_EQ(count->text(), "全图计数: 600");
    similarity->setValue(0.9);
    EXPECT_EQ(count->text(), "全图计数: 700");
    const QImage mask = ui::colourMask(picture_, 0xFF0000, 0.9f);
    EXPECT_EQ(mask.pixelColor(65, 15), Qt::white);
    EXPECT_EQ(mask.pixelColor(120, 100), Qt::black);

    save("red");
    const model::ColorRecord& colour = editor_.document().colors.back();
    EXPECT_EQ(std::tuple(colour.name, colour.color, colour.sim), std::tuple("red", 0xFF0000, 0.9f));
}

TEST_F(ScreenTools, AreasAreCropsAndClickAreasStayInsideTheirTemplate) {
    dialog_->setMode(Mode::SearchArea);
    drag(at(90, 70), at(159, 129));
    save("blue area");
    const auto* crop =
        dynamic_cast<const model::CropInfo*>(editor_.document().definitionByName("blue area"));
    ASSERT_TRUE(crop) << message().toStdString();
    EXPECT_EQ(std::tuple(crop->ori, crop->rect, crop->screenInfo.width),
              std::tuple(originalId_, QRect(90, 70, 70, 60), 200));
    EXPECT_EQ(view().overlays().back().label, "blue area");

    dialog_->setMode(Mode::ClickArea);
    EXPECT_FALSE(child<QPushButton>("pushButton_save")->isEnabled()) << "no template yet";
    ASSERT_TRUE(ui::saveTemplate(editor_, {originalId_, picture_, {100, 80, 50, 40}, "blue"}));
    dialog_->setMode(Mode::ClickArea);
    drag(at(120, 90), at(190, 140));
    EXPECT_EQ(view().selection(), QRect(120, 90, 30, 30));
    save("blue click");
    EXPECT_TRUE(editor_.document().definitionByName("blue click"));
}

TEST_F(ScreenTools, EveryControlIsNamed) {
    for (const Mode mode : {Mode::ClickArea, Mode::Colour}) {
        dialog_->setMode(mode);
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, at(20, 15));
        for (QWidget* widget : dialog_->findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
                widget != view().viewport() && !widget->inherits("QScrollBar") &&
                !widget->parentWidget()->inherits("QAbstractSpinBox")) {
                EXPECT_FALSE(widget->accessibleName().isEmpty())
                    << widget->metaObject()->className() << " "
                    << widget->objectName().toStdString();
            }
        }
    }
}

TEST_F(ScreenTools, ScreenshotBecomesTheShownOriginal) {
    picture_.fill(Qt::green);
    child<QPushButton>("pushButton_capture")->click();
    const auto& originals = editor_.document().originals;
    ASSERT_TRUE(QTest::qWaitFor([&] { return originals.back().id != originalId_; }, 3000));
    EXPECT_EQ(dialog_->originalId(), originals.back().id);
    EXPECT_EQ(child<QComboBox>("comboBox_ori")->currentText(), originals.back().name);
    EXPECT_EQ(ui::loadOriginal(editor_.document(), originals.back().id).pixelColor(0, 0),
              Qt::green);
    editor_.undo();
    EXPECT_EQ(dialog_->originalId(), 0) << "nothing is cut from an original taken back";
    EXPECT_FALSE(child<QPushButton>("pushButton_save")->isEnabled());
}

}  // namespace
}  // namespace autoscene::testing

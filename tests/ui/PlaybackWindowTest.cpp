#include <QAction>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "MainWindowFixture.h"
#include "editor/TaskEditor.h"
#include "model/EditorConditions.h"
#include "ui/EventTree.h"
#include "ui/playback/EvidenceView.h"
#include "ui/playback/PlaybackWindow.h"

// Xlib's macros (None) after gtest's names.
#include "DemoTargetProcess.h"

namespace autoscene::testing {
namespace {

// A demo run recorded without the finish scene's stop action and with no loop interval, so
// that cycles that fire nothing follow those that do, opened in the playback window.
class PlaybackWindowTest : public MainWindowTest {
protected:
    void SetUp() override {
        task_.edit([](QJsonObject& root) { root["loop_interval"] = 0; });
        task_.dropLastScenesEvents();
        MainWindowTest::SetUp();
        DemoTargetProcess demo(qEnvironmentVariable("DISPLAY").toStdString(),
                               {"--geometry", "800x600+0+0"});
        ASSERT_TRUE(demo.started());
        run().start();
        // Stopped once the finish screen has been seen for a while (its cycles fire nothing).
        const auto recordedLines = [&] {
            const QDir root(ui::AppConfig::playbackFolder(task_.configPath()));
            QFile file(root.filePath(root.entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0) +
                                     "/cycles.jsonl"));
            return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
        };
        ASSERT_TRUE(QTest::qWaitFor([&] { return recordedLines() > 16; }, 20000));
        ASSERT_TRUE(stops());
        window_->findChild<QAction*>("playback")->trigger();
        playback_ = window_->findChild<ui::PlaybackWindow*>();
        ASSERT_TRUE(playback_ && playback_->marks());
    }

    const QJsonObject& line(int index) const { return playback_->marks()->cycle({0, index}).line; }
    int cycles() const { return playback_->marks()->cycleCount(0); }

    // The cycles that clicking `button` from the first (or last) cycle on lands on, in turn.
    std::vector<int> landings(const char* button, bool fromEnd = false) {
        playback_->showCycle({0, fromEnd ? cycles() - 1 : 0});
        std::vector<int> seen;
        for (;;) {
            playback_->findChild<QPushButton*>(button)->click();
            const int at = playback_->current()->index;
            if (!seen.empty() ? at == seen.back() : at == (fromEnd ? cycles() - 1 : 0)) {
                return seen;
            }
            seen.push_back(at);
        }
    }

    // The cycles whose recorded line satisfies `test`, after the first or before the last.
    std::vector<int> where(const std::function<bool(int)>& test, bool fromEnd = false) const {
        std::vector<int> found;
        for (int i = 1; i < cycles(); ++i) {
            const int index = fromEnd ? cycles() - 1 - i : i;
            if (test(index)) {
                found.push_back(index);
            }
        }
        return found;
    }

    bool fires(int index) const {
        const QJsonArray fired = line(index)["fired"].toArray();
        return std::any_of(fired.begin(), fired.end(),
                           [](const QJsonValue& f) { return f.toObject().contains("event"); });
    }

    ui::PlaybackWindow* playback_ = nullptr;
};

TEST_F(PlaybackWindowTest, StepsLandOnTheRecordedCyclesAndAnEditsChangesAreMarked) {
    const auto sceneChanges =
        where([&](int i) { return line(i)["scene"] != line(i - 1)["scene"]; });
    EXPECT_EQ(sceneChanges.size(), 3u) << "menu, form, finish";
    EXPECT_EQ(landings("pushButton_next_scene"), sceneChanges);
    EXPECT_EQ(
        landings("pushButton_previous_scene", true),
        where([&](int i) { return i == 0 || line(i)["scene"] != line(i - 1)["scene"]; }, true));
    const auto firing = where([&](int i) { return fires(i); });
    EXPECT_LT(firing.size(), size_t(cycles() - 1));
    EXPECT_EQ(landings("pushButton_next_event"), firing);
    EXPECT_EQ(landings("pushButton_previous_event", true),
              where([&](int i) { return fires(i); }, true));
    EXPECT_EQ(landings("pushButton_next_cycle"), where([](int) { return true; }));

    // The frame of the menu's first cycle shows its colour count.
    playback_->showCycle({0, sceneChanges[0]});
    const auto& shapes = playback_->evidence().shapes();
    EXPECT_TRUE(std::any_of(shapes.begin(), shapes.end(), [](const auto& shape) {
        return shape.rect.isNull() && shape.holds && shape.text.startsWith("menu background: ");
    }));

    // The form's identification, opened in the editor from the viewer.
    playback_->showCycle({0, where([&](int i) { return line(i)["scene"] == "form"; })[0]});
    auto* decisions = playback_->findChild<QTreeWidget*>("tree_decisions");
    const auto rows = decisions->findItems("识别界面 form", Qt::MatchContains);
    ASSERT_FALSE(rows.empty());
    decisions->setCurrentItem(rows[0]->child(0));
    playback_->findChild<QPushButton*>("pushButton_open_in_editor")->click();
    ui::TaskEditor& editor = window_->editor();
    const int form = window_->sceneList().currentRow();
    ASSERT_EQ(editor.sceneAt(form)->name, "form");
    EXPECT_EQ(window_->eventTree().selectedRows(), std::vector<int>{0});

    // Its colour count raised past what the form showed: exactly the cycles that counted
    // the form's colour and held now fail.
    constexpr int kRaised = 3900;
    model::EditorEvent identification = *editor.eventAt(form, 0);
    static_cast<model::EditorColorCondition&>(*identification.conditions.items()[0]).count =
        kRaised;
    ASSERT_TRUE(editor.replaceEvent(form, 0, identification, "raise"));
    const auto marked = [&] {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !playback_->replaying(); }, 20000));
        return where([&](int i) {
            return playback_->marks()->marks({0, i}) & ui::CycleMarks::kDiffers;
        });
    };
    const auto countedForm = where([&](int i) {
        for (const QJsonValue check : line(i)["checks"].toArray()) {
            for (const QJsonValue item : check["conditions"]["item_state"].toArray()) {
                if (item["name"] == "form background" && item["item_state"] == 1 &&
                    item["count"].toInt() <= kRaised) {
                    return true;
                }
            }
        }
        return false;
    });
    ASSERT_FALSE(countedForm.empty());
    EXPECT_EQ(marked(), countedForm);
    editor.undo();
    EXPECT_TRUE(marked().empty()) << "the recorded task decides as recorded";
}

}  // namespace
}  // namespace autoscene::testing

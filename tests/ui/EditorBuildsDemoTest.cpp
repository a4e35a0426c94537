// The demo task built from an empty one the way a user builds it: definitions through the
// new-definition dialog, scenes and events through the editor's actions, every condition
// and action through its form's controls. Saved, it is the demo apart from ids; the whole
// history undoes to the empty task and redoes to the saved bytes.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTabWidget>

#include "EventForms.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "TestTask.h"
#include "editor/DefinitionsDialog.h"
#include "editor/EventEditor.h"
#include "editor/TaskEditor.h"
#include "model/TaskDocument.h"

namespace autoscene::testing {
namespace {

struct Scene {
    QString name;
    Event identification;
    std::vector<Event> events;
};

// The task as the editor writes it, so that both sides carry the same defaults.
QJsonObject savedTask(const QString& folder) {
    model::TaskDocument document;
    document.openFolder(folder);
    return QJsonDocument::fromJson(document.serialise()).object();
}

TEST(EditorBuildsDemo, FromAnEmptyTaskThroughItsFormsAndUndoesAndRedoesWhole) {
    // Images, colours and the window settings come from the capture tools and the settings
    // dialog, not from these forms; they are kept.
    TestTask task;
    task.edit([](QJsonObject& root) {
        root["var_list"] = QJsonArray();
        root["scene_list"] = QJsonArray();
    });
    ui::TaskEditor editor;
    ASSERT_TRUE(editor.open(task.path()));
    const QByteArray empty = editor.document().serialise();
    model::definition_ids::reset();  // the new definitions take the demo's ids

    ui::DefinitionsDialog definitions(editor);
    const std::vector<std::pair<int, Fields>> newDefinitions = {
        {0, {{"name", "typed"}, {"value", "0"}}},
        {0, {{"name", "slid"}, {"value", "0"}}},
        {0, {{"name", "gold"}, {"value", "440,160,130,80"}}},
        {0, {{"name", "knob"}, {"value", "40,230,0,0"}}},
        {0, {{"name", "slider end"}, {"value", "445,230,0,0"}}},
        {4, {{"name", "background"}, {"ori", "demo target"}, {"rect", "20,300,100,40"}}},
        {4, {{"name", "next button"}, {"ori", "demo target"}, {"rect", "470,310,100,40"}}},
    };
    for (const auto& [tab, fields] : newDefinitions) {
        answerModals([&] { definitions.addDefinition(); },
                     {{"确定", {}, [&, tab = tab, &fields = fields](QWidget& dialog) {
                           dialog.findChild<QTabWidget*>()->setCurrentIndex(tab);
                           fill(dialog, fields);
                       }}});
    }
    ASSERT_EQ(editor.document().definitions.size(), newDefinitions.size());

    const auto colorMoreThan = [](const char* color, const char* region) {
        return Item{
            7, {{"color_id", color}, {"search_id", region}, {"state", "多于"}, {"count", "1000"}}};
    };
    const auto isZero = [](const char* variable) {
        return Item{2, {{"variable_id", variable}, {"compare_value", "0"}}};
    };
    const auto setToOne = [](const char* variable) {
        return Item{3, {{"variable_id", variable}, {"change_value", "1"}}};
    };
    const std::vector<Scene> scenes = {
        {"start",
         {"start button shown", {{1, {{"image_id", "start button"}}}}, {}},
         {{"press start", {}, {{2, {{"image_id", "start button"}, {"postpone", "0.5"}}}}}}},
        {"menu",
         {"menu background", {colorMoreThan("menu background", "background")}, {}},
         {{"choose gold", {}, {{1, {{"variable_id", "gold"}, {"postpone", "0.5"}}}}}}},
        {"form",
         {"form background", {colorMoreThan("form background", "background")}, {}},
         {{"type a name",
           {isZero("typed")},
           {{6, {{"text", "hello 世界"}, {"postpone", "0.3"}}}, setToOne("typed")}},
          {"drag the slider",
           {isZero("slid")},
           {{7,
             {{"var_list", "knob, slider end"},
              {"slide_time", "500"},
              {"time_list", "0.1, 0.6"},
              {"postpone", "0.3"}}},
            setToOne("slid")}},
          {"next",
           {colorMoreThan("next enabled", "next button")},
           {{11, {{"key", QString::number(Qt::Key_Return)}, {"postpone", "0.5"}}}}}}},
        {"finish",
         {"done badge shown", {{1, {{"image_id", "done badge"}}}}, {}},
         {{"stop", {}, {{10, {}}}}}},
    };
    int sceneRow = ui::TaskEditor::kFixedRows - 1;
    for (const Scene& scene : scenes) {
        SCOPED_TRACE(scene.name.toStdString());
        sceneRow = editor.addScene(sceneRow, scene.name);
        ASSERT_GE(sceneRow, ui::TaskEditor::kFixedRows);
        ui::EventEditor identification(editor.document(), *editor.eventAt(sceneRow, 0));
        fillEvent(identification, scene.identification);
        ASSERT_TRUE(editor.replaceEvent(sceneRow, 0, identification.result(), "edit"));
        for (const Event& event : scene.events) {
            model::EditorEvent added;
            added.id = editor.freeEventId();
            ui::EventEditor dialog(editor.document(), added);
            fillEvent(dialog, event);
            std::vector<model::EditorEvent> one;
            one.push_back(dialog.result());
            ASSERT_TRUE(
                editor.insertEvents(sceneRow, editor.eventRows(sceneRow), std::move(one), "add"));
        }
    }

    ASSERT_TRUE(editor.save());
    const QByteArray saved = editor.document().serialise();
    const QJsonObject built = savedTask(task.path());
    const QJsonObject demo = savedTask(AUTOSCENE_DEMO_TASK);
    for (const QString& key : demo.keys()) {
        // Events are numbered as they are made: their ids are left out.
        const auto shown = [&](const QJsonObject& root) {
            return QString(QJsonDocument(QJsonObject{{key, root[key]}}).toJson())
                .remove(QRegularExpression(R"(\n *"id": -?\d+,?)"))
                .toStdString();
        };
        EXPECT_EQ(shown(built), shown(demo));
    }

    const auto savedBytes = [&] {
        EXPECT_TRUE(editor.save());
        return test::readFile(task.path() + "/script.json");
    };
    while (editor.undoStack().canUndo()) {
        editor.undo();
    }
    EXPECT_EQ(savedBytes(), empty);
    while (editor.undoStack().canRedo()) {
        editor.redo();
    }
    EXPECT_EQ(savedBytes(), saved);
}

}  // namespace
}  // namespace autoscene::testing

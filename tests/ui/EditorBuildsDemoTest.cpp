// The demo task built from an empty one the way a user builds it: definitions through the
// new-definition dialog, scenes and events through the editor's actions, every condition
// and action through its form's controls. Saved, it is the demo apart from ids; the whole
// history undoes to the empty task and redoes to the saved bytes. What is entered is in
// tests/fixtures/ui/demo-through-forms.json.
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

Fields fieldsOf(const QJsonValue& pairs) {
    Fields fields;
    for (const QJsonValue pair : pairs.toArray()) {
        fields.emplace_back(pair[0].toString(), pair[1].toString());
    }
    return fields;
}

Event eventOf(const QJsonValue& event) {
    const auto items = [](const QJsonValue& list) {
        std::vector<Item> items;
        for (const QJsonValue item : list.toArray()) {
            items.push_back({item[0].toInt(), fieldsOf(item[1])});
        }
        return items;
    };
    return {event["name"].toString(), items(event["conditions"]), items(event["actions"])};
}

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

    const QJsonObject entered =
        QJsonDocument::fromJson(test::readFile(AUTOSCENE_FIXTURES "/ui/demo-through-forms.json"))
            .object();
    ui::DefinitionsDialog definitions(editor);
    for (const QJsonValue definition : entered["definitions"].toArray()) {
        answerModals([&] { definitions.addDefinition(); },
                     {{"确定", {}, [&](QWidget& dialog) {
                           dialog.findChild<QTabWidget*>()->setCurrentIndex(definition[0].toInt());
                           fill(dialog, fieldsOf(definition[1]));
                       }}});
    }

    int sceneRow = ui::TaskEditor::kFixedRows - 1;
    for (const QJsonValue scene : entered["scenes"].toArray()) {
        SCOPED_TRACE(scene["name"].toString().toStdString());
        sceneRow = editor.addScene(sceneRow, scene["name"].toString());
        ASSERT_GE(sceneRow, ui::TaskEditor::kFixedRows);
        ui::EventEditor identification(editor.document(), *editor.eventAt(sceneRow, 0));
        fillEvent(identification, eventOf(scene["identification"]));
        ASSERT_TRUE(editor.replaceEvent(sceneRow, 0, identification.result(), "edit"));
        for (const QJsonValue event : scene["events"].toArray()) {
            model::EditorEvent added;
            added.id = editor.freeEventId();
            ui::EventEditor dialog(editor.document(), added);
            fillEvent(dialog, eventOf(event));
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
    editor.undoStack().setIndex(0);
    EXPECT_EQ(savedBytes(), empty);
    editor.undoStack().setIndex(editor.undoStack().count());
    EXPECT_EQ(savedBytes(), saved);
}

}  // namespace
}  // namespace autoscene::testing

// The editor's core: every edit undoes and redoes to the same bytes, the field forms keep
// what they do not change, the checks name what is wrong, and events cross scenes and tasks
// through the clipboard's task JSON.
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTimeEdit>

#include "EventForms.h"
#include "MainWindowFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "editor/ColorButton.h"
#include "editor/ColorsDialog.h"
#include "editor/EventClipboard.h"
#include "editor/EventEditor.h"
#include "editor/FieldForm.h"
#include "editor/ItemCatalog.h"
#include "editor/KeyCaptureEdit.h"
#include "editor/PluginListDialog.h"
#include "editor/TaskEditor.h"
#include "model/JsonWriter.h"
#include "model/PluginDescription.h"
#include "ui/EventTree.h"

namespace autoscene::testing {
namespace {

template <class T>
QJsonObject recordOf(const T& item) {
    model::JsonWriter out;
    item.write(out);
    return QJsonDocument::fromJson(QByteArray::fromStdString(out.text())).object();
}

class Editor : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(editor_.open(task_.path())); }
    QByteArray text() const { return editor_.document().serialise(); }

    TestTask task_;
    ui::TaskEditor editor_;
};

// Adding scenes, events and definitions and editing events undo and redo in the test that
// builds the demo, pasting in the tests below.
TEST_F(Editor, EveryEditUndoesAndRedoesToTheSameBytes) {
    using ui::TaskEditor;
    const std::vector<std::pair<const char*, std::function<bool(TaskEditor&)>>> edits = {
        {"rename scene", [](TaskEditor& e) { return e.renameScene(4, "菜单 🍔"); }},
        {"delete scene", [](TaskEditor& e) { return e.deleteScene(5); }},
        {"delete events",
         [](TaskEditor& e) {
             return e.removeEvents(5, {1, 3});
         }},
        {"move event", [](TaskEditor& e) { return e.moveEvent(5, 1, 3); }},
        {"change definition",
         [](TaskEditor& e) {
             auto copy = e.document().definitions[0]->clone();
             copy->value = "42";
             return e.replaceDefinition(std::move(copy));
         }},
        {"delete definition", [](TaskEditor& e) { return e.removeDefinition(3); }},
        {"delete colour", [](TaskEditor& e) { return e.removeColor(2); }},
        {"change colour",
         [](TaskEditor& e) {
             model::ColorRecord color = e.document().colors[0];
             color.color ^= 0xFF;
             return e.replaceColor(color);
         }},
        {"change plug-in list",
         [](TaskEditor& e) {
             ui::TaskSetup setup = ui::TaskSetup::of(e.document());
             setup.actionPluginFiles << "p.json";
             return e.changeSetup(setup, "plug-ins");
         }},
        {"change settings",
         [](TaskEditor& e) {
             model::TaskSettings settings = e.document().settings;
             settings.windowInfo.title = "新窗口";
             return e.changeSettings(settings, "settings");
         }},
    };
    for (const auto& [name, edit] : edits) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(editor_.open(task_.path()));
        const QByteArray before = text();
        ASSERT_TRUE(edit(editor_));
        const QByteArray after = text();
        EXPECT_TRUE(after != before && editor_.isModified());
        editor_.undo();
        EXPECT_TRUE(text() == before && !editor_.isModified());
        editor_.redo();
        EXPECT_EQ(text(), after);
    }
}

TEST_F(Editor, PastingNeedsTaskJsonWithEventsAndAnUnlockedTask) {
    const QByteArray before = text();
    for (const QByteArray& bad : {QByteArray("hello"), QByteArray("[1,2]"), QByteArray("{}"),
                                  QByteArray("{\"scene_list\": 3}")}) {
        QString error;
        EXPECT_FALSE(editor_.pasteEvents(3, 1, bad, &error)) << bad.toStdString();
        EXPECT_FALSE(error.isEmpty()) << bad.toStdString();
    }
    const QByteArray good = R"({"scene_list": [{"name": "s", "event_list": [
        {"name": "e", "action_list": [{"type": 99}, {"type": 10}, "x"]}]}]})";
    editor_.setLocked(true);
    EXPECT_FALSE(editor_.pasteEvents(3, 1, good));
    EXPECT_FALSE(editor_.removeDefinition(1));
    EXPECT_EQ(text(), before);
    EXPECT_EQ(editor_.undoStack().count(), 0);

    editor_.setLocked(false);
    // Items of a kind this program does not know are left out; the rest comes in.
    ASSERT_TRUE(editor_.pasteEvents(3, 1, good));
    ASSERT_EQ(editor_.eventAt(3, 1)->name, "e");
    ASSERT_EQ(editor_.eventAt(3, 1)->actions.size(), 1u);
    EXPECT_EQ(editor_.eventAt(3, 1)->actions[0]->type(), 10);
}

TEST_F(Editor, PastedEventsFindWhatTheyUseByNameOrBringItWithItsFiles) {
    std::vector<std::pair<int, int>> places;
    std::vector<const model::EditorEvent*> events;
    for (int scene = 3; scene < editor_.sceneRows(); ++scene) {
        for (int row = 1; row < editor_.eventRows(scene); ++row) {
            places.emplace_back(scene, row);
            events.push_back(editor_.eventAt(scene, row));
        }
    }
    const QByteArray json = ui::eventsToTaskJson(editor_.document(), events);

    TestTask otherTask;
    otherTask.edit([](QJsonObject& root) {
        root["var_list"] = QJsonArray();
        root["image_list"] = QJsonArray();
        root["color_list"] = QJsonArray();
    });
    QDir(otherTask.path() + "/image").removeRecursively();
    ui::TaskEditor other;
    ASSERT_TRUE(other.open(otherTask.path()));
    QString error;
    EXPECT_FALSE(other.pasteEvents(3, 1, json, &error));  // the image file is nowhere
    EXPECT_TRUE(error.contains("start button")) << error.toStdString();
    const auto counts = [](const model::TaskDocument& task) {
        return std::vector{task.definitions.size(), task.images.size(), task.colors.size()};
    };
    for (int pass = 0; pass < 2; ++pass) {  // the second paste finds them by name
        ASSERT_TRUE(other.pasteEvents(3, 1, json, &error, task_.path())) << error.toStdString();
        const model::TaskDocument& into = other.document();
        // The six definitions the events use, one image, one colour.
        ASSERT_EQ(counts(into), (std::vector<size_t>{6, 1, 1}));
        EXPECT_EQ(QString("%1 %2 %3 %4")
                      .arg(into.images[0].name, into.colors[0].name)
                      .arg(into.usersOf(model::Ref::Image, into.images[0].id).size())
                      .arg(into.usersOf(model::Ref::Color, into.colors[0].id).size()),
                  QString("start button next enabled %1 %1").arg(pass + 1));
        for (const auto& definition : into.definitions) {
            EXPECT_FALSE(into.usersOf(model::Ref::Definition, definition->id).empty())
                << definition->name.toStdString();
        }
        EXPECT_EQ(test::readFile(otherTask.path() + "/image/" + into.images[0].file),
                  test::readFile(task_.path() + "/image/" + editor_.document().images[0].file));
    }
    other.undo();
    other.undo();
    EXPECT_EQ(counts(other.document()), std::vector<size_t>(3, 0));

    // Back into the demo: the same events under new ids, adding nothing else.
    const auto before = counts(editor_.document());
    const int end = editor_.eventRows(6);
    ASSERT_TRUE(editor_.pasteEvents(6, end, json));
    EXPECT_EQ(counts(editor_.document()), before);
    for (size_t i = 0; i < places.size(); ++i) {
        const model::EditorEvent& original = *editor_.eventAt(places[i].first, places[i].second);
        model::EditorEvent pasted = *editor_.eventAt(6, end + int(i));
        EXPECT_NE(pasted.id, original.id);
        pasted.id = original.id;
        EXPECT_EQ(recordOf(pasted), recordOf(original));
    }
}

TEST_F(Editor, DeletingAColourListsItsUsersAndAsks) {
    ui::ColorsDialog colors(editor_);
    EXPECT_TRUE(answerModal([&] { colors.deleteColor(2); }, "取消").text.contains("form / next"));
    EXPECT_EQ(editor_.document().colors.size(), 3u);
    answerModal([&] { colors.deleteColor(2); }, "确定");
    EXPECT_EQ(colors.list().count(), 2);
}

// Changes a control the way a user would; false when it offers nothing else to choose.
bool changeControl(QWidget* control, const QString& key, const model::TaskDocument& task) {
    if (auto* combo = qobject_cast<QComboBox*>(control)) {
        combo->setCurrentIndex((combo->currentIndex() + 1) % combo->count());
        return combo->count() > 1;
    }
    if (auto* spin = qobject_cast<QSpinBox*>(control)) {
        spin->setValue(spin->value() + 1);
    } else if (auto* real = qobject_cast<QDoubleSpinBox*>(control)) {
        real->setValue(real->value() + (real->value() + 0.5 <= real->maximum() ? 0.5 : -0.5));
    } else if (auto* box = qobject_cast<QCheckBox*>(control)) {
        box->toggle();
    } else if (auto* time = qobject_cast<QTimeEdit*>(control)) {
        time->setTime(time->time().addSecs(61));
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(control)) {
        text->appendPlainText("x");
    } else if (auto* keys = qobject_cast<ui::KeyCaptureEdit*>(control)) {
        QTest::keyClick(keys, Qt::Key_F5, Qt::ControlModifier);
    } else if (auto* color = qobject_cast<ui::ColorButton*>(control)) {
        color->setRgb(color->rgb() ^ 0x0000FF);
    } else if (auto* line = qobject_cast<QLineEdit*>(control)) {
        const QMap<QString, QString> valid = {{"rect", "1,2,3,4"},
                                              {"time_list", "0.5, 1"},
                                              {"var_list", task.definitions[0]->name},
                                              {"exclude", task.definitions[0]->name}};
        const bool json = key.startsWith("action_") || key == "target" || key == "filter_color";
        line->setText(valid.value(key, json ? "[1]" : line->text() + "字"));
    } else {
        return false;  // a form of its own, checked by its own test
    }
    return true;
}

void addFields(ui::FieldForm& form, model::IEditorItem& item, const model::TaskDocument& task) {
    ui::addItemFields(form, item, task);
}
void addFields(ui::FieldForm& form, model::EditorVariable& item, const model::TaskDocument& task) {
    ui::addDefinitionFields(form, item, task);
}

// Opens `original`'s form unchanged, then each field changed once: the record changes only
// under that field's key, and the changed record comes back through a new form as it is.
template <class T>
void checkEveryField(const model::TaskDocument& task, const T& original) {
    SCOPED_TRACE(original.type());
    const QJsonObject before = recordOf(original);
    auto unchanged = original.clone();
    ui::FieldForm first(task);
    addFields(first, *unchanged, task);
    first.apply();
    EXPECT_EQ(recordOf(*unchanged), before);
    for (const QString& path : first.paths()) {
        SCOPED_TRACE(path.toStdString());
        auto copy = original.clone();
        ui::FieldForm form(task);
        addFields(form, *copy, task);
        if (!changeControl(form.control(path), path.section('/', -1), task)) {
            continue;
        }
        form.apply();
        const QJsonObject changed = recordOf(*copy);
        QStringList changedKeys;
        for (const QString& key : before.keys()) {
            if (before[key] != changed[key]) {
                changedKeys << key;
            }
        }
        // A variable's scope is kept as three flags.
        EXPECT_EQ(changedKeys.join(','), path == "scope" ? "is_local" : path.section('/', 0, 0));
        ui::FieldForm again(task);
        addFields(again, *copy, task);
        again.apply();
        EXPECT_EQ(recordOf(*copy), changed);
    }
}

// Every kind as new, and every item of the demo as it is.
TEST_F(Editor, EachFormKeepsItsRecordAndChangesOnlyTheFieldChanged) {
    const model::TaskDocument& task = editor_.document();
    for (const ui::ItemKind& kind : ui::conditionKinds()) {
        checkEveryField(task, *ui::newCondition(kind.type));
    }
    for (const ui::ItemKind& kind : ui::actionKinds()) {
        checkEveryField(task, *ui::newAction(kind.type));
    }
    for (const ui::ItemKind& kind : ui::definitionKinds()) {
        checkEveryField(task, *ui::newDefinition(kind.type));
    }
    task.forEachCondition([&](const model::IEditorItem& item) {
        if (item.type() != model::EditorGroupCondition::kType) {
            checkEveryField(task, static_cast<const model::IEditorCondition&>(item));
        }
    });
    task.forEachAction([&](const model::IEditorItem& item) {
        checkEveryField(task, static_cast<const model::IEditorAction&>(item));
    });
    for (const auto& definition : task.definitions) {
        checkEveryField(task, *definition);
    }
}

TEST_F(Editor, PluginActionsChooseFromTheTasksPluginListAndFillTheirRecord) {
    ui::PluginListDialog plugins(editor_);
    EXPECT_TRUE(answerModal([&] { plugins.addPluginFile(task_.path() + "/script.json"); }, "确定")
                    .text.startsWith("插件文件:"));
    ASSERT_TRUE(plugins.addPluginFile(EXAMPLE_PLUGINS "/colour-probe.json"));
    EXPECT_TRUE(plugins.list().item(0)->text().startsWith("Colour probe"));

    auto action = ui::newAction(model::EditorPluginAction::kType);
    ui::FieldForm form(editor_.document());
    ui::addItemFields(form, *action, editor_.document());
    fill(form, {{"input_value/region", "0,0,10,10"},
                {"input/match", "typed"},
                {"option/tolerance", "32"},
                {"output/count", "slid"}});
    ASSERT_TRUE(form.problems().isEmpty()) << form.problems().join(',').toStdString();
    form.apply();
    const QJsonObject record = recordOf(*action);
    EXPECT_EQ(record["config_file"].toString(), EXAMPLE_PLUGINS "/colour-probe.json");
    const QJsonObject wanted =
        QJsonDocument::fromJson(test::readFile(AUTOSCENE_FIXTURES "/colour-probe-action.json"))
            .object();
    for (const QString& key : wanted.keys()) {
        EXPECT_EQ(record[key], wanted[key]) << key.toStdString();
    }

    // Removing asks; without its plug-in the action still opens, says why and keeps its record.
    EXPECT_TRUE(answerModal([&] { plugins.removePlugin(0); }, "确定")
                    .text.contains("如果任务中使用相关功能移除后将会导致异常"));
    EXPECT_TRUE(editor_.document().pluginFiles.isEmpty());
    static_cast<model::EditorPluginAction&>(*action).configFile = "gone.json";
    ui::FieldForm orphan(editor_.document());
    ui::addItemFields(orphan, *action, editor_.document());
    EXPECT_EQ(orphan.findChild<QLabel*>("label_plugin_status")->text(),
              model::missingPluginMessage());
    EXPECT_EQ(orphan.findChild<QComboBox*>("input/match")->currentText(), "typed");
    orphan.apply();
    EXPECT_EQ(recordOf(*action)["action_inputs"], record["action_inputs"]);
}

TEST_F(Editor, FormsSayWhatIsWrongBeforeSaving) {
    model::TaskDocument& task = editor_.document();
    task.width = 800;
    task.height = 600;
    const auto problems = [&](auto& item, const QString& path, const QString& value) {
        ui::FieldForm form(task);
        addFields(form, item, task);
        if (!path.isEmpty()) {
            qobject_cast<QLineEdit*>(form.control(path))->setText(value);
        }
        return form.problems().join('\n');
    };
    EXPECT_EQ(problems(*ui::newCondition(1), {}, {}), "图片: 没有选择");
    EXPECT_EQ(problems(*ui::newAction(20), {}, {}), "没有选择插件");
    EXPECT_EQ(problems(*ui::newAction(9), "exclude", "typed, 无此变量"),
              "不重置的变量: 没有名为 无此变量 的变量");
    auto variable = ui::newDefinition(1);
    EXPECT_EQ(problems(*variable, "name", "typed"), "变量名重复");
    EXPECT_EQ(problems(*variable, "name", " "), "名称不能为空");
    // A right-to-left override is a character like any other in a name.
    // NOLINTNEXTLINE(misc-misleading-bidirectional)
    EXPECT_EQ(problems(*variable, "name", "ÿ 𝕏 \u202Eok"), "");
    // The one being edited keeps its own name.
    EXPECT_EQ(problems(*task.definitions[0], "name", "typed"), "");
    auto crop = ui::newDefinition(2);
    crop->name = "区域";
    EXPECT_EQ(problems(*crop, "rect", "700,500,200,50"), "区域超出屏幕 (800×600)");
    EXPECT_EQ(problems(*crop, "rect", "0,0,800,600"), "");
    EXPECT_EQ(problems(*crop, "rect", "1,2,3"), "区域应为 x,y,宽,高 四个数");
}

TEST_F(Editor, ScriptFormsTestTheirCodeWithTheTasksVariables) {
    auto script = ui::newAction(12);
    ui::FieldForm form(editor_.document());
    ui::addItemFields(form, *script, editor_.document());
    qobject_cast<QPlainTextEdit*>(form.control("js_code"))->setPlainText("typed + gold");
    EXPECT_EQ(answerModal([&] { form.findChild<QPushButton*>("pushButton_test")->click(); }, "确定")
                  .said(),
              "测试结果: 0440,160,130,80");
}

TEST_F(Editor, EventEditorBuildsConditionTreesAndActionLists) {
    ui::EventEditor dialog(editor_.document(), *editor_.eventAt(5, 1));
    const size_t actions = editor_.eventAt(5, 1)->actions.size();
    dialog.addGroup();
    // The new group is selected: the condition goes into it.
    answerModal([&] { dialog.addCondition(9); }, "确定");
    answerModal([&] { dialog.addAction(14); }, "确定");
    answerModal([&] { dialog.addAction(10); }, "取消");
    model::EditorEvent event = dialog.result();
    const auto& members = event.conditions.items();
    ASSERT_EQ(members.back()->type(), model::EditorGroupCondition::kType);
    const auto& group = static_cast<const model::EditorGroupCondition&>(*members.back());
    ASSERT_EQ(group.items().size(), 1u);
    EXPECT_EQ(group.items()[0]->type(), 9);

    // The delay moves up past the last of the old actions, which then goes; the cancelled
    // action was never added.
    dialog.actionList().setCurrentRow(int(actions));
    dialog.moveSelected(-1);
    dialog.actionList().setCurrentRow(int(actions));
    dialog.removeSelected();
    EXPECT_EQ(dialog.result().actions.size(), actions);
    EXPECT_EQ(dialog.result().actions.back()->type(), 14);
}

// The main window: the marker, undo through its actions and the question on close.
using EditorWindow = MainWindowTest;

TEST_F(EditorWindow, UnsavedEditsAreMarkedAndAskedAboutOnClose) {
    window_->sceneList().selectRow(5);
    ui::EventTree& tree = window_->eventTree();
    tree.selectRows({1});
    tree.toggleSelected();
    EXPECT_TRUE(window_->isWindowModified());
    EXPECT_TRUE(tree.currentIndex().data().toString().endsWith("(已禁用)"));
    window_->findChild<QAction*>("action_undo")->trigger();
    EXPECT_FALSE(window_->isWindowModified());
    window_->findChild<QAction*>("action_redo")->trigger();

    EXPECT_EQ(answerModal([&] { window_->close(); }, "取消").text, "任务已修改,是否保存?");
    EXPECT_TRUE(window_->isVisible());
    answerModal([&] { window_->close(); }, "保存");
    EXPECT_FALSE(window_->isVisible());
    model::TaskDocument saved;
    ASSERT_TRUE(saved.openFolder(task_.path()));
    EXPECT_TRUE(saved.scenes[2].events[0].disabled);
}

}  // namespace
}  // namespace autoscene::testing

// Renders every window and dialog of the application to PNG on a private Xvfb, so that
// whoever changes one can look at it: screenshots FOLDER.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>
#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>

#include "LoopbackPort.h"
#include "ModalAnswer.h"
#include "SharedOcrService.h"
#include "TestDevice.h"
#include "TestTask.h"
#include "XvfbServer.h"
#include "editor/ColorsDialog.h"
#include "editor/DefinitionsDialog.h"
#include "editor/EventEditor.h"
#include "editor/FieldForm.h"
#include "editor/FormDialog.h"
#include "editor/ItemCatalog.h"
#include "editor/PluginListDialog.h"
#include "editor/TaskEditor.h"
#include "model/EditorConditions.h"
#include "recognition/LabelDetector.h"
#include "screen/OriginalView.h"
#include "screen/ScreenToolsDialog.h"
#include "text/OcrClient.h"
#include "ui/AutoRunner.h"
#include "ui/LogTargetWindow.h"
#include "ui/MainWindow.h"
#include "ui/PluginFuncsDialog.h"
#include "ui/RunConfiguration.h"
#include "ui/RunControl.h"
#include "ui/SceneListView.h"
#include "ui/TaskMainPage.h"
#include "ui/Translations.h"
#include "ui/playback/PlaybackWindow.h"
#include "ui/probe/ProbeOcr.h"
#include "ui/probe/ProbePanel.h"
#include "ui/templates/ModelsDialog.h"
#include "ui/templates/TemplatesDialog.h"
#include "x11/X11Backend.h"
#include "x11/X11WindowPicker.h"

// Xlib's macros (Bool, None) after everything else.
#include "DemoTargetProcess.h"

namespace autoscene::testing {
namespace {

using namespace autoscene::ui;

class Shooter {
public:
    explicit Shooter(QString folder) : folder_(std::move(folder)) { QDir().mkpath(folder_); }

    // Appended to every name: the pictures of each language side by side.
    void setSuffix(const QString& suffix) { suffix_ = suffix; }

    // Shows the widget first if it is not yet.
    void save(QWidget& widget, const QString& name) {
        widget.show();
        QApplication::processEvents();
        const QString path = QDir(folder_).filePath(name + suffix_ + ".png");
        if (!widget.grab().save(path)) {
            std::fprintf(stderr, "could not write %s\n", qPrintable(path));
            failed_ = true;
        }
        std::printf("%s\n", qPrintable(path));
    }

    // Renders the modal dialogs that `trigger` opens one after another; whatever stays open
    // after `answer` (a box, a dialog that refuses its values) is closed.
    void saveModals(const QStringList& names, const std::function<void()>& trigger) {
        std::vector<ModalAnswer> answers;
        for (const QString& name : names) {
            answers.push_back({{}, {}, [this, name](QWidget& dialog) { answer(dialog, name); }});
        }
        const auto seen = answerModals(trigger, answers);
        for (qsizetype i = 0; i < names.size(); ++i) {
            if (!seen[i].shown) {
                std::fprintf(stderr, "no dialog for %s\n", qPrintable(names[i]));
                failed_ = true;
            }
        }
    }

    bool failed() const { return failed_; }

private:
    // Clicks the first button of a box that cannot be closed, accepts other dialogs.
    void answer(QWidget& dialog, const QString& name) {
        save(dialog, name);
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        if (box && !box->escapeButton()) {
            box->buttons().constFirst()->click();
        } else if (auto* other = qobject_cast<QDialog*>(&dialog); other && !box) {
            other->accept();
        }
    }

    QString folder_;
    QString suffix_;
    bool failed_ = false;
};

// Runs `shoot` on a main window on `task`, shown beside a demo target at `demoGeometry`.
void withDemoWindow(const TestTask& task, const std::string& demoGeometry,
                    const std::function<void(MainWindow&)>& shoot) {
    const auto backend = platform::makeX11Backend(nullptr);
    const auto picker = platform::makeX11WindowPicker(nullptr);
    MainWindow window{AppConfig(task.configPath()),
                      {backend.get(), nullptr, nullptr, picker.get()}};
    if (QString error; !window.openTask(task.path(), &error)) {
        return;
    }
    window.setGeometry(0, 0, 1180, 700);
    window.show();
    DemoTargetProcess demo(qgetenv("DISPLAY").toStdString(), {"--geometry", demoGeometry});
    shoot(window);
}

bool waitUntilIdle(MainWindow& window, int timeout = 5000) {
    return QTest::qWaitFor([&] { return window.runControl().state() == RunControl::State::Idle; },
                           timeout);
}

void shootRun(Shooter& shooter) {
    TestTask task;
    task.dropLastScenesEvents();  // it waits on the last screen until stopped
    AppConfig(task.configPath()).setLoopMode(2);
    withDemoWindow(task, "800x600+1200+0", [&](MainWindow& window) {
        QMenu* targets = window.findChild<QPushButton*>("pushButton_select_window")->menu();
        const auto targetMenu = [&](int entry) { targets->actions()[entry]->trigger(); };
        const auto stop = [&] {
            window.runControl().stop();
            if (!waitUntilIdle(window)) {
                std::fprintf(stderr, "the run did not stop\n");
            }
        };
        shooter.saveModals({"window-list"}, [&] { targetMenu(0); });
        shooter.saveModals({"window-info"}, [&] { targetMenu(3); });
        // Answered with its first button, "查看设置": the mode dialog, then no run.
        shooter.saveModals({"run-mode-changed", "loop-mode-dialog"},
                           [&] { window.runControl().start(); });
        AppConfig(task.configPath()).setLoopMode(1);  // the task's own: no question
        window.runControl().start();
        window.findChild<QAction*>("action_logviewer")->trigger();
        QTest::qWait(3000);
        shooter.save(window, "main-window-running");
        shooter.save(window.logWindow(), "log-window");
        window.logWindow().close();
        stop();
        AppConfig(task.configPath()).setLoopMode(0);
        shooter.saveModals({"run-mode-unset", "loop-mode-dialog-unset"},
                           [&] { window.runControl().start(); });
        stop();
    });
}

// The playback window on a recording of the demo run, then after an edit that makes the form
// scene's identification fail on its recorded frames.
void shootPlayback(Shooter& shooter) {
    TestTask task;
    AppConfig(task.configPath()).setLoopMode(1);
    withDemoWindow(task, "800x600+1200+0", [&](MainWindow& window) {
        window.runControl().start();
        if (!waitUntilIdle(window, 20000)) {
            std::fprintf(stderr, "the demo run did not end\n");
            return;
        }
        window.findChild<QAction*>("playback")->trigger();
        auto* playback = window.findChild<PlaybackWindow*>();
        playback->findChild<QPushButton*>("pushButton_next_scene")->click();
        auto* decisions = playback->findChild<QTreeWidget*>("tree_decisions");
        decisions->setCurrentItem(decisions->topLevelItem(decisions->topLevelItemCount() - 1));
        shooter.save(*playback, "playback");
        TaskEditor& editor = window.editor();
        const int form = 5;  // the demo's form scene
        model::EditorEvent identification = *editor.eventAt(form, 0);
        static_cast<model::EditorColorCondition&>(*identification.conditions.items()[0]).count =
            3900;
        editor.replaceEvent(form, 0, identification, "raise");
        if (!QTest::qWaitFor([&] { return !playback->replaying(); }, 20000)) {
            std::fprintf(stderr, "the replay of the edited task did not end\n");
        }
        playback->findChild<QPushButton*>("pushButton_next_difference")->click();
        shooter.save(*playback, "playback-edited");
    });
}

// The screen tools on a screenshot of the demo, taken through the toolbar as a user would.
void shootScreenTools(Shooter& shooter) {
    TestTask task;
    task.edit([](QJsonObject& root) {
        QJsonObject window = root["window_info"].toObject();
        window["width"] = 800;
        window["height"] = 600;
        root["window_info"] = window;
    });
    withDemoWindow(task, "800x600+1240+0", [&](MainWindow& window) {
        QTest::qWait(1000);
        using Mode = ScreenToolsDialog::Mode;
        window.findChild<QAction*>("action_crop_image")->trigger();
        ScreenToolsDialog& tools = window.screenTools(Mode::Template);
        tools.resize(1280, 800);
        tools.move(0, 0);
        if (!QTest::qWaitFor([&] { return !tools.view().image().isNull(); }, 5000)) {
            std::fprintf(stderr, "no screenshot of the demo\n");
            return;
        }
        OriginalView& view = tools.view();
        view.setZoom(1);
        view.setSelection({220, 200, 200, 80});
        shooter.save(tools, "screen-template");
        view.setZoom(16, view.viewportRectOf({220, 200, 1, 1}).topLeft());
        shooter.save(tools, "screen-template-zoomed");
        view.setZoom(1);
        tools.saveCurrent();
        shooter.save(tools, "screen-template-saved");
        for (const auto& [mode, area, name] :
             {std::tuple(Mode::SearchArea, QRect(180, 160, 280, 160), "screen-area"),
              std::tuple(Mode::ClickArea, QRect(240, 220, 60, 40), "screen-click-area"),
              std::tuple(Mode::TextRegion, QRect(20, 20, 300, 60), "screen-text-region")}) {
            tools.setMode(mode);
            view.setSelection(area);
            shooter.save(tools, name);
        }
        tools.setMode(Mode::Colour);
        view.setSelection({});
        tools.pickColour({30, 300});
        shooter.save(tools, "screen-colour");
        tools.close();
    });
}

void shootTaskPage(Shooter& shooter) {
    TestTask task;
    task.markConfigVariables({0, 2});
    TaskMainPage page{AppConfig(task.configPath()), {}};
    QString error;
    if (!page.openTask(task.path(), &error)) {
        return;
    }
    page.setConfiguration({{{0x400001, "Autoscene Demo", {}, {{1, "1"}}},
                            {0x600001, "Autoscene Demo", {}, {{1, "2"}}},
                            {0, {}, "127.0.0.1:5555", {}}}});
    shooter.save(page, "task-page");
    const auto click = [&](const char* name) { page.findChild<QPushButton*>(name)->click(); };
    shooter.saveModals({"task-page-empty"}, [&] { click("pushButton_load"); });
    saveConfiguration(task.path(), "两台", page.configuration(), &error);
    shooter.saveModals({"task-page-load"}, [&] { click("pushButton_load"); });
    page.findChild<QTableWidget*>()->setCurrentCell(0, 1);
    shooter.saveModals({"task-page-sync"}, [&] { click("pushButton_sync"); });
}

// With a test device behind an adb server of its own, listed in ADB mode.
void shootMainWindow(Shooter& shooter) {
    PrivateAdb adb;
    TestDevice device;
    adb.connect(device);
    TestTask task;
    AppConfig(task.configPath()).addRecentTask(task.path());
    AutoRunner welcome{AppConfig(task.configPath()), {}};
    shooter.save(welcome, "welcome");
    std::unique_ptr<MainWindow> window(welcome.openTask(task.path()));
    if (!window) {
        return;
    }
    window->resize(960, 640);
    window->sceneList().selectRow(3);
    shooter.save(*window, "main-window");
    withContextMenu(window->sceneList(), 4, [&](QMenu& menu) { shooter.save(menu, "scene-menu"); });
    const auto trigger = [&](const char* action) {
        window->findChild<QAction*>(action)->trigger();
    };
    shooter.saveModals({"settings"}, [&] { trigger("action_settings"); });
    shooter.saveModals({"plugin-funcs"}, [&] {
        PluginFuncsDialog(plugins::BackgroundServices{}, window.get()).exec();
    });
    shooter.saveModals({"rename-prompt"}, [&] { window->sceneList().renameRow(4); });
    shooter.saveModals({"delete-question"}, [&] { window->sceneList().deleteRow(4); });
    if (auto* targets = window->findChild<QMenu*>()) {
        targets->popup(window->mapToGlobal(QPoint(10, 60)));
        shooter.save(*targets, "target-menu");
        targets->close();
        shooter.saveModals({"device-list"}, [&] { targets->actions()[1]->trigger(); });
    }
    // A file where the task folder was makes the save fail.
    task.folder().removeRecursively();
    QFile(task.path()).open(QIODevice::WriteOnly);
    shooter.saveModals({"save-failed"}, [&] { trigger("action_save"); });
    shooter.saveModals({"close-question"}, [&] { window->close(); });
    QFile::remove(task.path());
}

// Every form once, the event editor, and the definition dialogs with their questions.
void shootEditor(Shooter& shooter) {
    TestTask task;
    TaskEditor editor;
    if (!editor.open(task.path())) {
        return;
    }
    const auto& document = editor.document();
    const auto shootForm = [&](FieldForm* form, const QString& title, const QString& name) {
        FormDialog dialog(form, title);
        dialog.show();
        dialog.accept();  // shows what is wrong with the new item, if anything
        shooter.save(dialog, name);
    };
    const auto shootItem = [&](std::unique_ptr<model::IEditorItem> item, const QString& name) {
        auto* form = new FieldForm(document);
        addItemFields(*form, *item, document);
        shootForm(form, itemFormTitle(*item), name);
    };
    for (const ItemKind& kind : conditionKinds()) {
        shootItem(newCondition(kind.type), QStringLiteral("condition-%1").arg(kind.type));
    }
    for (const ItemKind& kind : actionKinds()) {
        shootItem(newAction(kind.type), QStringLiteral("action-%1").arg(kind.type));
    }
    for (const ItemKind& kind : definitionKinds()) {
        auto definition = newDefinition(kind.type);
        auto* form = new FieldForm(document);
        addDefinitionFields(*form, *definition, document);
        shootForm(form, kind.name, QStringLiteral("definition-%1").arg(kind.type));
    }
    EventEditor events(document, *editor.eventAt(5, 1));
    shooter.save(events, "event-editor");
    DefinitionsDialog definitions(editor);
    shooter.save(definitions, "definitions");
    shooter.saveModals({"definition-new"}, [&] { definitions.addDefinition(); });
    shooter.saveModals({"definition-delete-used"}, [&] { definitions.deleteDefinition(0); });
    ColorsDialog colors(editor);
    shooter.save(colors, "colors");
    shooter.saveModals({"color-edit"}, [&] { colors.editColor(0); });
    shooter.saveModals({"color-delete-used"}, [&] { colors.deleteColor(2); });
    PluginListDialog plugins(editor);
    plugins.addPluginFile(QStringLiteral(EXAMPLE_PLUGINS "/colour-probe.json"));
    shooter.save(plugins, "plugin-list");
    shootItem(newAction(model::EditorPluginAction::kType), "action-20-chosen");
    shooter.saveModals({"plugin-remove"}, [&] { plugins.removePlugin(0); });
}

// The test on the screen passing and failing, the template images and the label model.
void shootProbeAndTemplates(Shooter& shooter) {
    TestTask task;
    task.folder().mkdir("ori");
    // The start button twice on grey; "开始游戏" and "Start Game".
    for (const QString name : {"a.png", "c.png"}) {
        QFile::copy(AUTOSCENE_FIXTURES "/ui/screenshot-originals/" + name,
                    task.folder().filePath("ori/" + name));
    }
    TaskEditor editor;
    if (!editor.open(task.path())) {
        return;
    }
    model::EditorImageCondition condition;
    condition.imageId = 1;
    for (const int searchId : {0, 7}) {
        condition.searchId = searchId;
        ProbePanel panel(editor.document(), &condition, nullptr, nullptr);
        panel.test();
        shooter.save(panel, QStringLiteral("probe-panel-%1").arg(searchId));
    }
    model::EditorGroupCondition group;
    for (const int searchId : {7, 0}) {
        condition.searchId = searchId;
        group.append(condition.clone());
    }
    ProbePanel grouped(editor.document(), &group, nullptr, nullptr);
    grouped.test();
    shooter.save(grouped, "probe-panel-group");
    ProbePanel busy(editor.document(), &condition, nullptr, nullptr, [] {
        return std::function<QImage()>([] {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            return QImage();
        });
    });
    busy.test();
    shooter.save(busy, "probe-panel-busy");
    // Text read by the recognition service, and the verdict without one.
    model::EditorScreenTextCondition text;
    text.textInfo.value = QStringLiteral("Start Game");
    const std::pair<std::string, QString> services[] = {
        {ocr::testkit::sharedOcrService().url(), "probe-panel-text"},
        {text::ocrServiceUrl(test::unusedLoopbackPort()), "probe-panel-no-service"}};
    for (const auto& [url, name] : services) {
        ProbeOcr ocr(std::make_shared<text::OcrClient>(url));
        ProbePanel panel(editor.document(), &text, nullptr, nullptr, {}, &ocr);
        panel.source().setCurrentIndex(1);  // c.png
        panel.test();
        shooter.save(panel, name);
    }
    TemplatesDialog templates(editor);
    shooter.save(templates, "templates");
    ModelsDialog models(editor);
    shooter.save(models, "models");
    models.useModel(recognition::labelModelFiles(AUTOSCENE_FIXTURES "/label-model", "tiny"));
    models.test();
    shooter.save(models, "models-tested");
}

}  // namespace
}  // namespace autoscene::testing

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    using namespace autoscene::testing;
    XvfbServer server(2048, 800);
    if (server.display().empty()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    setenv("DISPLAY", server.display().c_str(), 1);
    QApplication app(argc, argv);
    Shooter shooter(QString::fromLocal8Bit(argv[1]));
    const auto shootAll = [&] {
        for (const auto shoot : {shootMainWindow, shootEditor, shootRun, shootTaskPage,
                                 shootPlayback, shootProbeAndTemplates, shootScreenTools}) {
            shoot(shooter);
        }
    };
    shootAll();
    if (QTranslator* english = installTranslation(app, QLocale(QLocale::English))) {
        shooter.setSuffix("-en");
        shootAll();
        QApplication::removeTranslator(english);
    }
    return shooter.failed() ? 1 : 0;
}

// Renders every window and dialog of the application to PNG on a private Xvfb, so that
// whoever changes one can look at it: screenshots FOLDER.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QJsonArray>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QTreeWidget>
#include <chrono>
#include <cstdio>
#include <functional>
#include <opencv2/imgcodecs.hpp>
#include <thread>

#include "LoopbackPort.h"
#include "RenderedText.h"
#include "SharedOcrService.h"
#include "TestDevice.h"
#include "TestTask.h"
#include "TinyLabelModel.h"
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

namespace {

using autoscene::testing::TestTask;
using namespace autoscene::ui;

class Shooter {
public:
    explicit Shooter(QString folder) : folder_(std::move(folder)) { QDir().mkpath(folder_); }

    void save(QWidget& widget, const QString& name) {
        QApplication::processEvents();
        const QString path = QDir(folder_).filePath(name + ".png");
        if (!widget.grab().save(path)) {
            std::fprintf(stderr, "could not write %s\n", qPrintable(path));
            failed_ = true;
        }
        std::printf("%s\n", qPrintable(path));
    }

    // Renders the modal dialogs that `trigger` opens one after another, closing message
    // boxes (or clicking the first button of those that cannot be closed) and accepting
    // other dialogs.
    void saveModals(const QStringList& names, const std::function<void()>& trigger) {
        qsizetype next = 0;
        QPointer<QWidget> shot;
        QTimer poll;
        poll.setInterval(200);
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog || dialog == shot.data() || next >= names.size()) {
                return;
            }
            shot = dialog;
            save(*dialog, names[next++]);
            if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
                // A box without an escape button ignores closing: click its first button.
                if (box->escapeButton()) {
                    box->close();
                } else {
                    box->buttons().constFirst()->click();
                }
            } else if (auto* other = qobject_cast<QDialog*>(dialog)) {
                other->accept();
                // A dialog that refuses its values stays open: leave it unchanged.
                if (other->isVisible()) {
                    other->reject();
                }
            }
        });
        poll.start();
        trigger();
        if (next < names.size()) {
            std::fprintf(stderr, "no dialog for %s\n", qPrintable(names[next]));
            failed_ = true;
        }
    }

    void saveModal(const QString& name, const std::function<void()>& trigger) {
        saveModals({name}, trigger);
    }

    void saveContextMenu(SceneListView& view, int row, const QString& name) {
        QTimer::singleShot(200, [this, name] {
            if (QWidget* menu = QApplication::activePopupWidget()) {
                save(*menu, name);
                menu->close();
            }
        });
        const QRect cell = view.visualRect(view.model()->index(row, 0));
        QContextMenuEvent event(QContextMenuEvent::Mouse, cell.center(),
                                view.viewport()->mapToGlobal(cell.center()));
        QApplication::sendEvent(view.viewport(), &event);
    }

    bool failed() const { return failed_; }

private:
    QString folder_;
    bool failed_ = false;
};

void shootRun(Shooter& shooter, const QString& suffix) {
    TestTask task;
    // Without its stop action the task waits on the last screen until stopped.
    task.edit([](QJsonObject& root) {
        QJsonArray scenes = root["scene_list"].toArray();
        QJsonObject finish = scenes.last().toObject();
        finish["event_list"] = QJsonArray();
        scenes.replace(scenes.size() - 1, finish);
        root["scene_list"] = scenes;
    });
    AppConfig(task.configPath()).setLoopMode(2);
    const auto backend = autoscene::platform::makeX11Backend(nullptr);
    const auto picker = autoscene::platform::makeX11WindowPicker(nullptr);
    MainWindow window{AppConfig(task.configPath()),
                      {backend.get(), nullptr, nullptr, picker.get()}};
    QString error;
    if (!window.openTask(task.path(), &error)) {
        return;
    }
    window.setGeometry(0, 0, 1180, 700);
    window.show();
    autoscene::testing::DemoTargetProcess demo(qgetenv("DISPLAY").toStdString(),
                                               {"--geometry", "800x600+1200+0"});
    shooter.saveModal("window-list" + suffix, [&] {
        window.findChild<QPushButton*>("pushButton_select_window")->menu()->actions()[0]->trigger();
    });
    const auto stop = [&] {
        window.runControl().stop();
        if (!QTest::qWaitFor(
                [&] { return window.runControl().state() == RunControl::State::Idle; })) {
            std::fprintf(stderr, "the run did not stop\n");
        }
    };
    shooter.saveModal("window-info" + suffix, [&] {
        window.findChild<QPushButton*>("pushButton_select_window")->menu()->actions()[3]->trigger();
    });
    // Answered with its first button, "查看设置": the mode dialog, then no run.
    shooter.saveModals({"run-mode-changed" + suffix, "loop-mode-dialog" + suffix},
                       [&] { window.runControl().start(); });
    AppConfig(task.configPath()).setLoopMode(1);  // the task's own: no question
    window.runControl().start();
    window.findChild<QAction*>("action_logviewer")->trigger();
    QTest::qWait(3000);
    shooter.save(window, "main-window-running" + suffix);
    shooter.save(window.logWindow(), "log-window" + suffix);
    window.logWindow().close();
    stop();
    AppConfig(task.configPath()).setLoopMode(0);
    shooter.saveModals({"run-mode-unset" + suffix, "loop-mode-dialog-unset" + suffix},
                       [&] { window.runControl().start(); });
    stop();
}

// The playback window on a recording of the demo run, then after an edit that makes the form
// scene's identification fail on its recorded frames.
void shootPlayback(Shooter& shooter, const QString& suffix) {
    TestTask task;
    AppConfig(task.configPath()).setLoopMode(1);
    const auto backend = autoscene::platform::makeX11Backend(nullptr);
    MainWindow window{AppConfig(task.configPath()), {backend.get(), nullptr, nullptr, nullptr}};
    QString error;
    if (!window.openTask(task.path(), &error)) {
        return;
    }
    window.setGeometry(0, 0, 1180, 700);
    window.show();
    autoscene::testing::DemoTargetProcess demo(qgetenv("DISPLAY").toStdString(),
                                               {"--geometry", "800x600+1200+0"});
    window.runControl().start();
    if (!QTest::qWaitFor([&] { return window.runControl().state() == RunControl::State::Idle; },
                         20000)) {
        std::fprintf(stderr, "the demo run did not end\n");
        return;
    }
    window.findChild<QAction*>("playback")->trigger();
    auto* playback = window.findChild<PlaybackWindow*>();
    playback->findChild<QPushButton*>("pushButton_next_scene")->click();
    auto* decisions = playback->findChild<QTreeWidget*>("tree_decisions");
    decisions->setCurrentItem(decisions->topLevelItem(decisions->topLevelItemCount() - 1));
    shooter.save(*playback, "playback" + suffix);
    TaskEditor& editor = window.editor();
    for (int row = TaskEditor::kFixedRows; row < editor.sceneRows(); ++row) {
        if (editor.sceneAt(row)->name == "form") {
            autoscene::model::EditorEvent identification = *editor.eventAt(row, 0);
            static_cast<autoscene::model::EditorColorCondition&>(
                *identification.conditions.items()[0])
                .count = 3900;
            editor.replaceEvent(row, 0, identification, "raise");
        }
    }
    if (!QTest::qWaitFor([&] { return !playback->replaying(); }, 20000)) {
        std::fprintf(stderr, "the replay of the edited task did not end\n");
    }
    playback->findChild<QPushButton*>("pushButton_next_difference")->click();
    shooter.save(*playback, "playback-edited" + suffix);
}

// A test device behind an adb server of its own, listed in ADB mode.
void shootDevices(Shooter& shooter, const QString& suffix) {
    autoscene::testing::PrivateAdb adb;
    autoscene::testing::TestDevice device;
    adb.connect(device);
    TestTask task;
    MainWindow window{AppConfig(task.configPath()), {}};
    QString error;
    if (!window.openTask(task.path(), &error)) {
        return;
    }
    shooter.saveModal("device-list" + suffix, [&] {
        window.findChild<QPushButton*>("pushButton_select_window")->menu()->actions()[1]->trigger();
    });
}

void shootTaskPage(Shooter& shooter, const QString& suffix) {
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
    page.show();
    shooter.save(page, "task-page" + suffix);
    const auto click = [&](const char* name) { page.findChild<QPushButton*>(name)->click(); };
    shooter.saveModal("task-page-empty" + suffix, [&] { click("pushButton_load"); });
    saveConfiguration(task.path(), "两台", page.configuration(), &error);
    shooter.saveModal("task-page-load" + suffix, [&] { click("pushButton_load"); });
    page.findChild<QTableWidget*>()->setCurrentCell(0, 1);
    shooter.saveModal("task-page-sync" + suffix, [&] { click("pushButton_sync"); });
}

void shootMainWindow(Shooter& shooter, const QString& suffix) {
    TestTask task;
    AppConfig(task.configPath()).addRecentTask(task.path());
    AutoRunner welcome{AppConfig(task.configPath()), {}};
    welcome.show();
    shooter.save(welcome, "welcome" + suffix);
    MainWindow* window = welcome.openTask(task.path());
    if (!window) {
        return;
    }
    window->resize(960, 640);
    window->sceneList().selectRow(3);
    shooter.save(*window, "main-window" + suffix);
    shooter.saveContextMenu(window->sceneList(), 4, "scene-menu" + suffix);
    shooter.saveModal("settings" + suffix,
                      [&] { window->findChild<QAction*>("action_settings")->trigger(); });
    shooter.saveModal("plugin-funcs" + suffix, [&] {
        PluginFuncsDialog(autoscene::plugins::BackgroundServices{}, window).exec();
    });
    shooter.saveModal("rename-prompt" + suffix, [&] { window->sceneList().renameRow(4); });
    shooter.saveModal("delete-question" + suffix, [&] { window->sceneList().deleteRow(4); });
    QMenu* targets = window->findChild<QMenu*>();
    if (targets) {
        targets->popup(window->mapToGlobal(QPoint(10, 60)));
        shooter.save(*targets, "target-menu" + suffix);
        targets->close();
    }
    // A file where the task folder was makes the save fail.
    task.folder().removeRecursively();
    QFile(task.path()).open(QIODevice::WriteOnly);
    shooter.saveModal("save-failed" + suffix,
                      [&] { window->findChild<QAction*>("action_save")->trigger(); });
    shooter.saveModal("close-question" + suffix, [&] { window->close(); });
    QFile::remove(task.path());
    delete window;
}

// Every form once, the event editor, and the definition dialogs with their questions.
void shootEditor(Shooter& shooter, const QString& suffix) {
    TestTask task;
    TaskEditor editor;
    if (!editor.open(task.path())) {
        return;
    }
    const auto shootForm = [&](FieldForm* form, const QString& title, const QString& name) {
        FormDialog dialog(form, title);
        dialog.show();
        dialog.accept();  // shows what is wrong with the new item, if anything
        shooter.save(dialog, name + suffix);
    };
    for (const ItemKind& kind : conditionKinds()) {
        auto item = newCondition(kind.type);
        auto* form = new FieldForm(editor.document());
        addItemFields(*form, *item, editor.document());
        shootForm(form, itemFormTitle(*item), QStringLiteral("condition-%1").arg(kind.type));
    }
    for (const ItemKind& kind : actionKinds()) {
        auto item = newAction(kind.type);
        auto* form = new FieldForm(editor.document());
        addItemFields(*form, *item, editor.document());
        shootForm(form, itemFormTitle(*item), QStringLiteral("action-%1").arg(kind.type));
    }
    for (const ItemKind& kind : definitionKinds()) {
        auto definition = newDefinition(kind.type);
        auto* form = new FieldForm(editor.document());
        addDefinitionFields(*form, *definition, editor.document());
        shootForm(form, kind.name, QStringLiteral("definition-%1").arg(kind.type));
    }
    EventEditor events(editor.document(), *editor.eventAt(5, 1));
    events.show();
    shooter.save(events, "event-editor" + suffix);
    DefinitionsDialog definitions(editor);
    definitions.show();
    shooter.save(definitions, "definitions" + suffix);
    shooter.saveModal("definition-new" + suffix, [&] { definitions.addDefinition(); });
    shooter.saveModal("definition-delete-used" + suffix, [&] { definitions.deleteDefinition(0); });
    ColorsDialog colors(editor);
    colors.show();
    shooter.save(colors, "colors" + suffix);
    shooter.saveModal("color-edit" + suffix, [&] { colors.editColor(0); });
    shooter.saveModal("color-delete-used" + suffix, [&] { colors.deleteColor(2); });
    PluginListDialog plugins(editor);
    plugins.addPluginFile(QStringLiteral(EXAMPLE_PLUGINS "/colour-probe.json"));
    plugins.show();
    shooter.save(plugins, "plugin-list" + suffix);
    auto plugin = newAction(autoscene::model::EditorPluginAction::kType);
    auto* form = new FieldForm(editor.document());
    addItemFields(*form, *plugin, editor.document());
    shootForm(form, itemFormTitle(*plugin), "action-20-chosen");
    shooter.saveModal("plugin-remove" + suffix, [&] { plugins.removePlugin(0); });
}

// The screen tools on a screenshot of the demo, taken through the toolbar as a user would.
void shootScreenTools(Shooter& shooter, const QString& suffix) {
    TestTask task;
    task.edit([](QJsonObject& root) {
        QJsonObject window = root["window_info"].toObject();
        window["width"] = 800;
        window["height"] = 600;
        root["window_info"] = window;
    });
    const auto backend = autoscene::platform::makeX11Backend(nullptr);
    MainWindow window{AppConfig(task.configPath()), {backend.get(), nullptr, nullptr, nullptr}};
    QString error;
    if (!window.openTask(task.path(), &error)) {
        return;
    }
    autoscene::testing::DemoTargetProcess demo(qgetenv("DISPLAY").toStdString(),
                                               {"--geometry", "800x600+1240+0"});
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
    shooter.save(tools, "screen-template" + suffix);
    view.setZoom(16, view.viewportRectOf({220, 200, 1, 1}).topLeft());
    shooter.save(tools, "screen-template-zoomed" + suffix);
    view.setZoom(1);
    tools.saveCurrent();
    shooter.save(tools, "screen-template-saved" + suffix);
    tools.setMode(Mode::SearchArea);
    view.setSelection({180, 160, 280, 160});
    shooter.save(tools, "screen-area" + suffix);
    tools.setMode(Mode::ClickArea);
    view.setSelection({240, 220, 60, 40});
    shooter.save(tools, "screen-click-area" + suffix);
    tools.setMode(Mode::TextRegion);
    view.setSelection({20, 20, 300, 60});
    shooter.save(tools, "screen-text-region" + suffix);
    tools.setMode(Mode::Colour);
    view.setSelection({});
    tools.pickColour({30, 300});
    shooter.save(tools, "screen-colour" + suffix);
    tools.close();
}

// The test on the screen passing and failing, the template images and the label model.
void shootProbeAndTemplates(Shooter& shooter, const QString& suffix) {
    TestTask task;
    task.folder().mkdir("ori");
    QImage screen(640, 480, QImage::Format_RGB32);
    screen.fill(QColor(90, 90, 90));
    QPainter(&screen).drawImage(220, 200, QImage(task.folder().filePath("image/1.png")));
    QPainter(&screen).drawImage(20, 40, QImage(task.folder().filePath("image/1.png")));
    screen.save(task.folder().filePath("ori/a.png"));
    cv::imwrite(task.folder().filePath("ori/c.png").toStdString(),
                autoscene::ocr::testkit::renderTextFrame(
                    {640, 360}, {{"开始游戏", {30, 40}, 40}, {"Start Game", {330, 44}, 36}}));
    TaskEditor editor;
    if (!editor.open(task.path())) {
        return;
    }
    autoscene::model::EditorImageCondition condition;
    condition.imageId = 1;
    for (const int searchId : {0, 7}) {
        condition.searchId = searchId;
        ProbePanel panel(editor.document(), &condition, nullptr, nullptr);
        panel.show();
        panel.test();
        shooter.save(panel, QStringLiteral("probe-panel-%1%2").arg(searchId).arg(suffix));
    }
    ProbePanel busy(editor.document(), &condition, nullptr, nullptr, [] {
        return std::function<QImage()>([] {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            return QImage();
        });
    });
    busy.show();
    busy.test();
    shooter.save(busy, "probe-panel-busy" + suffix);
    // Text read by the recognition service, and the verdict without one.
    autoscene::model::EditorScreenTextCondition text;
    text.textInfo.value = QStringLiteral("Start Game");
    const std::pair<std::string, QString> services[] = {
        {autoscene::ocr::testkit::sharedOcrService().url(), "probe-panel-text"},
        {autoscene::text::ocrServiceUrl(autoscene::test::unusedLoopbackPort()),
         "probe-panel-no-service"}};
    for (const auto& [url, name] : services) {
        ProbeOcr ocr(std::make_shared<autoscene::text::OcrClient>(url));
        ProbePanel panel(editor.document(), &text, nullptr, nullptr, {}, &ocr);
        panel.source().setCurrentIndex(1);  // c.png
        panel.show();
        panel.test();
        shooter.save(panel, name + suffix);
    }
    TemplatesDialog templates(editor);
    templates.show();
    shooter.save(templates, "templates" + suffix);
    ModelsDialog models(editor);
    models.show();
    shooter.save(models, "models" + suffix);
    QTemporaryDir modelFolder;
    models.useModel(autoscene::testing::tinyModel(QDir(modelFolder.path())));
    models.test();
    shooter.save(models, "models-tested" + suffix);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    autoscene::testing::XvfbServer server(2048, 800);
    if (server.display().empty()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    setenv("DISPLAY", server.display().c_str(), 1);
    QApplication app(argc, argv);
    Shooter shooter(QString::fromLocal8Bit(argv[1]));
    shootMainWindow(shooter, "");
    shootEditor(shooter, "");
    shootRun(shooter, "");
    shootDevices(shooter, "");
    shootTaskPage(shooter, "");
    shootPlayback(shooter, "");
    shootProbeAndTemplates(shooter, "");
    shootScreenTools(shooter, "");
    if (QTranslator* english = installTranslation(app, QLocale(QLocale::English))) {
        shootMainWindow(shooter, "-en");
        shootEditor(shooter, "-en");
        shootRun(shooter, "-en");
        shootDevices(shooter, "-en");
        shootTaskPage(shooter, "-en");
        shootPlayback(shooter, "-en");
        shootProbeAndTemplates(shooter, "-en");
        shootScreenTools(shooter, "-en");
        QApplication::removeTranslator(english);
    }
    return shooter.failed() ? 1 : 0;
}

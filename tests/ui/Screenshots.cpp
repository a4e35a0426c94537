// Renders every window and dialog of the application to PNG on a private Xvfb, so that
// whoever changes one can look at it: screenshots FOLDER.
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <cstdio>
#include <functional>

#include "TestTask.h"
#include "XvfbServer.h"
#include "ui/AutoRunner.h"
#include "ui/MainWindow.h"
#include "ui/SceneListView.h"
#include "ui/Translations.h"

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

    // Renders the modal dialog that `trigger` opens, then closes it.
    void saveModal(const QString& name, const std::function<void()>& trigger) {
        QTimer::singleShot(200, [this, name] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                save(*dialog, name);
                dialog->close();
            } else {
                std::fprintf(stderr, "no dialog for %s\n", qPrintable(name));
                failed_ = true;
            }
        });
        trigger();
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

void shootMainWindow(Shooter& shooter, const QString& suffix) {
    TestTask task;
    AutoRunner welcome{AppConfig(task.configPath())};
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

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    autoscene::testing::XvfbServer server(1280, 800);
    if (server.display().empty()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    setenv("DISPLAY", server.display().c_str(), 1);
    QApplication app(argc, argv);
    Shooter shooter(QString::fromLocal8Bit(argv[1]));
    shootMainWindow(shooter, "");
    if (QTranslator* english = installTranslation(app, QLocale(QLocale::English))) {
        shootMainWindow(shooter, "-en");
        QApplication::removeTranslator(english);
    }
    return shooter.failed() ? 1 : 0;
}

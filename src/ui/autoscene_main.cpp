#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QLoggingCategory>

#include "http/Http.h"
#include "system/CrashHandler.h"
#include "ui/AutoRunner.h"
#include "ui/Translations.h"
#include "x11/X11Backend.h"
#include "x11/X11HotKeys.h"
#include "x11/X11WindowControl.h"
#include "x11/X11WindowPicker.h"

Q_LOGGING_CATEGORY(lcDesktop, "autoscene.targets.x11")

// autoscene [TASK_DIR]: the welcome window, or the task's main window straight away.
int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/image/ic_auto_logo.ico")));
    autoscene::sys::installCrashHandler();
    autoscene::http::initHttpOnce();
    autoscene::ui::installTranslation(app, QLocale::system());

    const auto backend = autoscene::platform::makeX11Backend(
        nullptr, [](const std::string& line) { qCDebug(lcDesktop).noquote() << line.c_str(); });
    const auto windows = autoscene::platform::makeX11WindowControl(nullptr);
    const auto hotKeys = autoscene::platform::makeX11HotKeys(nullptr);
    const auto picker = autoscene::platform::makeX11WindowPicker(nullptr);
    autoscene::ui::AutoRunner welcome{autoscene::ui::AppConfig(),
                                      {backend.get(), windows.get(), hotKeys.get(), picker.get()}};
    const QStringList arguments = QApplication::arguments();
    // With a task folder the welcome window shows only when the task cannot be opened.
    if (arguments.size() < 2 || !welcome.openTask(arguments.at(1))) {
        welcome.show();
    }
    return QApplication::exec();
}

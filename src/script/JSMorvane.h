#pragma once
// The script object `auto`: variables, clipboard, shell, colours, the calling worker's
// window and the run's exclusive queue.

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include "script/ScriptContext.h"
#include "script/ScriptWindows.h"

namespace autoscene::script {

class JSMorvane : public QObject {
    Q_OBJECT
public:
    JSMorvane(const ScriptContext& context, QObject* parent);

    // The run's variable of that name; nothing outside a run or for an unknown name.
    Q_INVOKABLE void setValue(const QString& var, const QString& value);
    // Opens an absolute URL with the desktop's handler.
    Q_INVOKABLE void browse(const QString& url);
    // Runs `cmd` through the system's shell; what it printed, or empty text when it could
    // not run.
    Q_INVOKABLE QString shell(const QString& cmd);
    Q_INVOKABLE QString getClip();
    Q_INVOKABLE void setClip(const QString& text);
    // "#RRGGBB" of the task's colour of that name, or "#Invalid".
    Q_INVOKABLE QString getColor(const QString& text);
    // Window records of visible top-level windows whose title and class equal
    // (findWindow) or contain (searchWindow) the given texts; empty texts match anything.
    Q_INVOKABLE QVariantList findWindow(const QString& title, const QString& className);
    Q_INVOKABLE QVariantList searchWindow(const QString& title, const QString& className);
    Q_INVOKABLE QString findChildWindow(const QString& hwndstr, const QString& title,
                                        const QString& className);
    // The calling worker's target window as decimal text; empty outside a run.
    Q_INVOKABLE QString getCurrentWindow();
    // The calling worker only; ignored unless it drives a window.
    Q_INVOKABLE void setCurrentWindow(const QString& hwndstr);
    // Raises the window and gives it the keyboard focus.
    Q_INVOKABLE void setForegroundWindow(const QString& hwndstr);
    // Back to the window the worker started with.
    Q_INVOKABLE void resetCurrentWindow();
    // The outer size, the position kept.
    Q_INVOKABLE void setWindowSize(const QString& hwndstr, int width, int height);
    Q_INVOKABLE void setWindowClientSize(const QString& hwndstr, int width, int height);
    // {x, y, width, height} on the screen: the frame included, and the client area; an
    // empty record for a handle that names no window.
    Q_INVOKABLE QVariantMap getWindowRect(const QString& hwndstr);
    Q_INVOKABLE QVariantMap getClientRect(const QString& hwndstr);
    // The frame's top-left corner to x, y.
    Q_INVOKABLE void moveWindow(const QString& hwndstr, int x, int y);
    // Asks the window to close, as its close button does.
    Q_INVOKABLE void closeWindow(const QString& hwndstr);
    Q_INVOKABLE void lock();
    Q_INVOKABLE void unlock();

private:
    ScriptContext context_;
    ScriptWindows windows_;
};

}  // namespace autoscene::script

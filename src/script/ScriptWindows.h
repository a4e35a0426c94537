#pragma once
// The window methods of `auto` over the desktop's window control: records as the script
// sees them, handles as decimal text. Every method does nothing for a handle that names no
// window, and without a window control.

#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include "desktop/WindowControl.h"

namespace autoscene::script {

// A decimal unsigned 64-bit integer; 0 for anything else.
platform::WindowHandle parseWindowHandle(const QString& text);

class ScriptWindows {
public:
    explicit ScriptWindows(platform::IWindowControl* control) : control_(control) {}

    // Visible top-level windows whose title and class equal the given ones (or contain
    // them, unless `exact`); an empty text matches anything. Records: hwnd, title,
    // class_name, rect ("x,y,width,height" of the client area on the screen).
    QVariantList topLevel(const QString& title, const QString& className, bool exact) const;
    // The first descendant whose title and class contain the given texts; empty when none.
    QString child(const QString& hwnd, const QString& title, const QString& className) const;
    // {x, y, width, height}; empty for no window.
    QVariantMap outerRect(const QString& hwnd) const;
    QVariantMap clientRect(const QString& hwnd) const;
    void move(const QString& hwnd, int x, int y) const;
    // The outer size, the position kept.
    void resizeOuter(const QString& hwnd, int width, int height) const;
    void resizeClient(const QString& hwnd, int width, int height) const;
    void close(const QString& hwnd) const;
    void activate(const QString& hwnd) const;

private:
    platform::IWindowControl* control_;
};

}  // namespace autoscene::script

#include "script/ScriptWindows.h"

namespace autoscene::script {

namespace {

QVariantMap rectRecord(const platform::Rect& rect) {
    return {{QStringLiteral("x"), rect.x},
            {QStringLiteral("y"), rect.y},
            {QStringLiteral("width"), rect.width},
            {QStringLiteral("height"), rect.height}};
}

// Window texts are in the system's 8-bit encoding: UTF-8 on X11, the ANSI code page on
// Windows.
QString localText(const std::string& text) {
    return QString::fromLocal8Bit(text.data(), qsizetype(text.size()));
}

bool textMatches(const QString& actual, const QString& wanted, bool exact) {
    return wanted.isEmpty() || (exact ? actual == wanted : actual.contains(wanted));
}

}  // namespace

platform::WindowHandle parseWindowHandle(const QString& text) {
    bool ok = false;
    const qulonglong value = text.trimmed().toULongLong(&ok, 10);
    return ok ? platform::WindowHandle(value) : 0;
}

QVariantList ScriptWindows::topLevel(const QString& title, const QString& className,
                                     bool exact) const {
    QVariantList records;
    if (!control_) {
        return records;
    }
    for (platform::WindowHandle window : control_->topLevelWindows()) {
        const platform::WindowInfo info = control_->describe(window);
        const QString windowTitle = localText(info.title);
        const QString windowClass = localText(info.className);
        if (info.window == 0 || !textMatches(windowTitle, title, exact) ||
            !textMatches(windowClass, className, exact)) {
            continue;
        }
        const platform::Rect& r = info.clientRect;
        records.push_back(QVariantMap{
            {QStringLiteral("hwnd"), QString::number(window)},
            {QStringLiteral("title"), windowTitle},
            {QStringLiteral("class_name"), windowClass},
            {QStringLiteral("rect"),
             QStringLiteral("%1,%2,%3,%4").arg(r.x).arg(r.y).arg(r.width).arg(r.height)}});
    }
    return records;
}

QString ScriptWindows::child(const QString& hwnd, const QString& title,
                             const QString& className) const {
    const platform::WindowHandle parent = parseWindowHandle(hwnd);
    if (!control_ || parent == 0) {
        return {};
    }
    for (platform::WindowHandle window : control_->childWindows(parent)) {
        const platform::WindowInfo info = control_->describe(window);
        if (info.window != 0 && textMatches(localText(info.title), title, false) &&
            textMatches(localText(info.className), className, false)) {
            return QString::number(window);
        }
    }
    return {};
}

QVariantMap ScriptWindows::outerRect(const QString& hwnd) const {
    const platform::WindowHandle window = parseWindowHandle(hwnd);
    if (!control_ || window == 0) {
        return {};
    }
    const auto rect = control_->outerRect(window);
    return rect ? rectRecord(*rect) : QVariantMap();
}

QVariantMap ScriptWindows::clientRect(const QString& hwnd) const {
    const platform::WindowHandle window = parseWindowHandle(hwnd);
    if (!control_ || window == 0) {
        return {};
    }
    const platform::WindowInfo info = control_->describe(window);
    return info.window != 0 ? rectRecord(info.clientRect) : QVariantMap();
}

void ScriptWindows::move(const QString& hwnd, int x, int y) const {
    if (const platform::WindowHandle window = parseWindowHandle(hwnd); control_ && window) {
        control_->moveWindow(window, {x, y});
    }
}

void ScriptWindows::resizeOuter(const QString& hwnd, int width, int height) const {
    const platform::WindowHandle window = parseWindowHandle(hwnd);
    if (!control_ || window == 0) {
        return;
    }
    const auto outer = control_->outerRect(window);
    const platform::WindowInfo info = control_->describe(window);
    if (!outer || info.window == 0) {
        return;
    }
    // The frame keeps its size: the client gets what the frame leaves.
    control_->resizeClient(window, width - (outer->width - info.clientRect.width),
                           height - (outer->height - info.clientRect.height));
}

void ScriptWindows::resizeClient(const QString& hwnd, int width, int height) const {
    if (const platform::WindowHandle window = parseWindowHandle(hwnd); control_ && window) {
        control_->resizeClient(window, width, height);
    }
}

void ScriptWindows::close(const QString& hwnd) const {
    if (const platform::WindowHandle window = parseWindowHandle(hwnd); control_ && window) {
        control_->closeWindow(window);
    }
}

void ScriptWindows::activate(const QString& hwnd) const {
    if (const platform::WindowHandle window = parseWindowHandle(hwnd); control_ && window) {
        control_->activateWindow(window);
    }
}

}  // namespace autoscene::script

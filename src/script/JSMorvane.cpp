#include "script/JSMorvane.h"

#include <QLoggingCategory>
#include <algorithm>
#include <stdexcept>

#include "engine/RunContext.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/TaskInfo.h"
#include "model/TaskDocument.h"
#include "script/Clipboard.h"
#include "script/ShellCommand.h"
#include "system/Process.h"

namespace autoscene::script {

Q_LOGGING_CATEGORY(lcScriptAuto, "autoscene.script.auto")

JSMorvane::JSMorvane(const ScriptContext& context, QObject* parent)
    : QObject(parent), context_(context), windows_(context.windows) {}

void JSMorvane::setValue(const QString& var, const QString& value) {
    if (!context_.definitions || var.isEmpty()) {
        return;
    }
    bool done = false;
    context_.definitions->forEach([&](engine::MVVariable& variable) {
        if (!done && variable.name() == var) {
            variable.setValue(value);
            done = true;
        }
    });
}

void JSMorvane::browse(const QString& url) {
    const std::string command = openUrlCommandLine(url);
    if (command.empty() || !sys::startHiddenProcess(command).started()) {
        qCDebug(lcScriptAuto) << "browse failed:" << url;
    }
}

QString JSMorvane::shell(const QString& cmd) {
    try {
        const std::string output = sys::runCommandCapture(shellCommandLine(cmd));
        return QString::fromUtf8(output.data(), qsizetype(output.size()));
    } catch (const std::exception& error) {
        qCDebug(lcScriptAuto) << "shell failed:" << error.what();
        return {};
    }
}

QString JSMorvane::getClip() {
    return context_.clipboard ? context_.clipboard->text() : QString();
}

void JSMorvane::setClip(const QString& text) {
    if (context_.clipboard) {
        context_.clipboard->setText(text);
    }
}

QString JSMorvane::getColor(const QString& text) {
    const auto& colors = context_.task.colors;
    const auto color = std::find_if(colors.begin(), colors.end(),
                                    [&](const model::ColorRecord& r) { return r.name == text; });
    if (color == colors.end() || color->color < 0 || color->color > 0xFFFFFF) {
        return QStringLiteral("#Invalid");
    }
    return QLatin1Char('#') +
           QStringLiteral("%1").arg(color->color, 6, 16, QLatin1Char('0')).toUpper();
}

QVariantList JSMorvane::findWindow(const QString& title, const QString& className) {
    return windows_.topLevel(title, className, true);
}

QVariantList JSMorvane::searchWindow(const QString& title, const QString& className) {
    return windows_.topLevel(title, className, false);
}

QString JSMorvane::findChildWindow(const QString& hwndstr, const QString& title,
                                   const QString& className) {
    return windows_.child(hwndstr, title, className);
}

void JSMorvane::setForegroundWindow(const QString& hwndstr) {
    windows_.activate(hwndstr);
}

void JSMorvane::setWindowSize(const QString& hwndstr, int width, int height) {
    windows_.resizeOuter(hwndstr, width, height);
}

void JSMorvane::setWindowClientSize(const QString& hwndstr, int width, int height) {
    windows_.resizeClient(hwndstr, width, height);
}

QVariantMap JSMorvane::getWindowRect(const QString& hwndstr) {
    return windows_.outerRect(hwndstr);
}

QVariantMap JSMorvane::getClientRect(const QString& hwndstr) {
    return windows_.clientRect(hwndstr);
}

void JSMorvane::moveWindow(const QString& hwndstr, int x, int y) {
    windows_.move(hwndstr, x, y);
}

void JSMorvane::closeWindow(const QString& hwndstr) {
    windows_.close(hwndstr);
}

QString JSMorvane::getCurrentWindow() {
    return context_.worker ? QString::number(context_.worker->window.load()) : QString();
}

void JSMorvane::setCurrentWindow(const QString& hwndstr) {
    const platform::WindowHandle window = parseWindowHandle(hwndstr);
    if (context_.worker && context_.worker->kind == engine::TargetKind::Window && window != 0) {
        context_.worker->window = window;
    }
}

void JSMorvane::resetCurrentWindow() {
    if (context_.worker && context_.worker->kind == engine::TargetKind::Window) {
        context_.worker->window = context_.worker->startWindow;
    }
}

void JSMorvane::lock() {
    if (context_.control) {
        context_.control->enterExclusive();
    }
}

void JSMorvane::unlock() {
    if (context_.control) {
        context_.control->leaveExclusive();
    }
}

}  // namespace autoscene::script

#pragma once
// The desktop clipboard as scripts see it. QClipboard belongs to the thread of the
// QGuiApplication, so calls from worker threads are carried over to it and wait there
// until it serves them or the clipboard is closed.

#include <QString>

namespace autoscene::script {

class Clipboard {
public:
    virtual ~Clipboard() = default;
    // Empty when the clipboard holds no text.
    virtual QString text() = 0;
    virtual void setText(const QString& text) = 0;
};

// The clipboard of the running QGuiApplication; nullptr when the program has none.
Clipboard* applicationClipboard();

// From now on the application clipboard's calls from other threads, those waiting
// included, return at once and do nothing: for an application thread that stops serving
// them (its display is gone). Call it on the application's thread.
void closeApplicationClipboard();

}  // namespace autoscene::script

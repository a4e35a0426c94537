#pragma once
// A task is code: what its scripts may do beyond the screen, for a user to read before
// running a task someone sent. The reading is of the code's text, so it names what the
// code says, and says when the code reaches the objects in ways that text cannot tell.

#include <QString>
#include <QStringList>
#include <vector>

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::script {

struct TaskScript {
    QString scene;
    QString event;
    bool condition = false;  // else an action
    QString code;
};

// Every script condition and action, scene by scene (the fixed scenes last), in order.
std::vector<TaskScript> taskScripts(const model::TaskDocument& task);

// What `code` calls beyond the screen: "runs shell commands", "writes or removes files",
// "reaches the network", "opens URLs", "uses the clipboard" and "reaches objects by
// computed names (cannot tell what it does)". Empty when it calls none of them.
QStringList scriptReach(const QString& code);

// Whether a script of the task calls the clipboard, or may by names a reading cannot tell.
bool scriptsMayUseClipboard(const model::TaskDocument& task);

}  // namespace autoscene::script

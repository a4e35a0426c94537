#pragma once
// The task file tool: `check` a task folder, `resave` it into another folder.

#include <QStringList>
#include <QTextStream>

namespace autoscene::app {

// Runs the tool on its arguments (without the program name); returns the exit code:
// 0 done, 1 the output could not be written, 2 bad arguments or an unreadable task.
int runTaskTool(const QStringList& arguments, QTextStream& out, QTextStream& err);

}  // namespace autoscene::app

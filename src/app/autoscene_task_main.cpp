#include <QCoreApplication>
#include <QTextStream>

#include "app/TaskTool.h"

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    return autoscene::app::runTaskTool(arguments, out, err);
}

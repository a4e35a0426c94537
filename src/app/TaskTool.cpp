#include "app/TaskTool.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <opencv2/imgcodecs.hpp>

#include "model/DanglingReferences.h"
#include "model/TaskDocument.h"
#include "model/TaskImages.h"
#include "model/TaskSummary.h"
#include "script/TaskScripts.h"

namespace autoscene::app {

using namespace autoscene::model;

namespace {

constexpr int kOk = 0;
constexpr int kWriteFailed = 1;
constexpr int kBadInput = 2;

const char* const kUsage =
    "usage: autoscene-task check DIR\n"
    "       autoscene-task resave DIR OUT\n"
    "  check   print a summary of the task in DIR (a folder holding script.json)\n"
    "  resave  open the task in DIR and save its script.json into OUT\n";

// Opens DIR/script.json; a folder without one is an error here, not a new task.
bool openTask(const QString& folder, TaskDocument& task, QTextStream& err) {
    const QString script = QDir(folder).filePath(QStringLiteral("script.json"));
    if (!QFileInfo(script).isFile()) {
        err << "autoscene-task: no script.json in " << folder << "\n";
        return false;
    }
    const OpenResult result = task.openFolder(folder);
    if (!result) {
        err << "autoscene-task: " << result.error << "\n";
        return false;
    }
    for (const ReadIssue& issue : result.skipped) {
        err << "skipped " << issue.where << ": " << issue.what << "\n";
    }
    return true;
}

QString taskModeText(int mode) {
    switch (TaskMode(mode)) {
        case TaskMode::FullScreen:
            return QStringLiteral("1 (full screen)");
        case TaskMode::Window:
            return QStringLiteral("2 (window)");
        case TaskMode::AndroidDevice:
            return QStringLiteral("3 (Android device)");
        default:
            return QString::number(mode);
    }
}

void reportImageFiles(const TaskDocument& task, QTextStream& err) {
    for (const ImageRecord& image : task.images) {
        const auto path = imageFilePath(task, image);
        if (!path) {
            err << "image " << image.id << ": refused file name \"" << image.file << "\"\n";
        } else if (!QFileInfo(*path).isFile()) {
            err << "image " << image.id << ": missing file " << *path << "\n";
        } else if (cv::imread(QFile::encodeName(*path).toStdString(), cv::IMREAD_UNCHANGED)
                       .empty()) {
            err << "image " << image.id << ": file does not decode as an image: " << *path << "\n";
        }
    }
}

// A task is code: each script, and what it does beyond the screen, before anyone runs it.
void reportScripts(const TaskDocument& task, QTextStream& out) {
    const std::vector<script::TaskScript> scripts = script::taskScripts(task);
    out << "scripts: " << scripts.size() << "\n";
    for (const script::TaskScript& found : scripts) {
        const QStringList reach = script::scriptReach(found.code);
        out << "  " << (found.condition ? "condition" : "action") << " in scene \"" << found.scene
            << "\", event \"" << found.event << "\": "
            << (reach.isEmpty() ? QStringLiteral("screen and variables only") : reach.join("; "))
            << "\n";
    }
}

int check(const QString& folder, QTextStream& out, QTextStream& err) {
    TaskDocument task;
    if (!openTask(folder, task, err)) {
        return kBadInput;
    }
    QFile script(QDir(folder).filePath(QStringLiteral("script.json")));
    if (script.open(QIODevice::ReadOnly) && script.readAll().trimmed().isEmpty()) {
        err << "script.json is empty: the task opens with default settings and has nothing "
               "to run\n";
    }
    const TaskSummary summary = summarise(task);
    out << "task: " << task.name << "\n"
        << "task mode: " << taskModeText(task.settings.taskMode) << "\n"
        << "scenes: " << summary.scenes << "\n"
        << "events: " << summary.events << "\n"
        << "conditions: " << summary.conditions << "\n"
        << "actions: " << summary.actions << "\n"
        << "definitions: " << summary.definitions << "\n"
        << "images: " << summary.images << "\n"
        << "colours: " << summary.colors << "\n";
    reportScripts(task, out);
    reportImageFiles(task, err);
    for (const QString& line : danglingReferences(task)) {
        err << line << "\n";
    }
    return kOk;
}

int resave(const QString& folder, const QString& outFolder, QTextStream& err) {
    TaskDocument task;
    if (!openTask(folder, task, err)) {
        return kBadInput;
    }
    QString error;
    if (!task.saveTo(outFolder, &error)) {
        err << "autoscene-task: " << error << "\n";
        return kWriteFailed;
    }
    return kOk;
}

}  // namespace

int runTaskTool(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const QString command = arguments.value(0);
    if (command == QLatin1String("check") && arguments.size() == 2) {
        return check(arguments[1], out, err);
    }
    if (command == QLatin1String("resave") && arguments.size() == 3) {
        return resave(arguments[1], arguments[2], err);
    }
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        out << kUsage;
        return kOk;
    }
    err << kUsage;
    return kBadInput;
}

}  // namespace autoscene::app

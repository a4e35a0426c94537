#include "script/TaskScripts.h"

#include <QRegularExpression>
#include <algorithm>

#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/EditorScene.h"
#include "model/TaskDocument.h"

namespace autoscene::script {

namespace {

void addConditions(const model::EditorGroupCondition& group, const QString& scene,
                   const QString& event, std::vector<TaskScript>& out) {
    for (const auto& item : group.items()) {
        if (const auto* nested = dynamic_cast<const model::EditorGroupCondition*>(item.get())) {
            addConditions(*nested, scene, event, out);
        } else if (const auto* js =
                       dynamic_cast<const model::EditorJavaScriptCondition*>(item.get())) {
            out.push_back({scene, event, true, js->jsCode});
        }
    }
}

const char* const kUsesClipboard = "uses the clipboard";
const char* const kComputedNames = "reaches objects by computed names (cannot tell what it does)";

// `object.method(`, with any blanks around the dot.
QRegularExpression callOf(const QString& object, const QString& methods) {
    return QRegularExpression(QStringLiteral("\\b%1\\s*\\.\\s*(%2)\\s*\\(").arg(object, methods));
}

}  // namespace

std::vector<TaskScript> taskScripts(const model::TaskDocument& task) {
    std::vector<TaskScript> scripts;
    model::TaskDocument::forEachScene(task, [&](const model::EditorScene& scene) {
        for (const model::EditorEvent* event : scene.allEvents()) {
            addConditions(event->conditions, scene.name, event->name, scripts);
            for (const auto& action : event->actions) {
                if (const auto* js =
                        dynamic_cast<const model::EditorJavaScriptAction*>(action.get())) {
                    scripts.push_back({scene.name, event->name, false, js->jsCode});
                }
            }
        }
    });
    return scripts;
}

QStringList scriptReach(const QString& code) {
    static const std::pair<QRegularExpression, const char*> reaches[] = {
        {callOf("auto", "shell"), "runs shell commands"},
        {callOf("file", "write|remove|rename|move|copy|touch|mkdir"), "writes or removes files"},
        {callOf("image", "save"), "writes or removes files"},
        {callOf("http", "get|post|postJson|download"), "reaches the network"},
        {callOf("auto", "browse"), "opens URLs"},
        {callOf("auto", "getClip|setClip"), kUsesClipboard},
        // auto["shell"], a global object handed to another name, eval and Function hide
        // the call from a reading of the text.
        {QRegularExpression(
             QStringLiteral("\\b(auto|file|http)\\s*\\[|[=(,:]\\s*(auto|file|http)\\s*[;,)}]|"
                            "\\b(eval|Function|globalThis|this)\\b")),
         kComputedNames},
    };
    QStringList found;
    for (const auto& [pattern, text] : reaches) {
        if (pattern.match(code).hasMatch()) {
            found << QString::fromLatin1(text);
        }
    }
    found.removeDuplicates();
    return found;
}

bool scriptsMayUseClipboard(const model::TaskDocument& task) {
    const std::vector<TaskScript> scripts = taskScripts(task);
    return std::any_of(scripts.begin(), scripts.end(), [](const TaskScript& script) {
        const QStringList reach = scriptReach(script.code);
        return reach.contains(QLatin1String(kUsesClipboard)) ||
               reach.contains(QLatin1String(kComputedNames));
    });
}

}  // namespace autoscene::script

#include "Checks.h"

#include <QRegularExpression>
#include <algorithm>

#include "model/TaskDocument.h"

namespace autoscene::fuzz {

namespace {

using namespace autoscene::model;

// The click-colour action writes its pause under a key it does not read, so a reload
// always brings back the default pause. Starting from that state lets the comparison
// flag every other difference between reading and writing.
void forgetClickColourPauses(TaskDocument& task) {
    TaskDocument::forEachScene(task, [](EditorScene& scene) {
        for (EditorEvent* event : scene.allEvents()) {
            for (auto& action : event->actions) {
                if (auto* clickColour = dynamic_cast<EditorClickColorAction*>(action.get())) {
                    clickColour->interval = ClickColorActionRecord{}.interval;
                }
            }
        }
    });
}

// Descriptions look up ids and format values straight from the file; building every
// one puts that code under the sanitizers too. A colour must show as "#rrggbb"
// whatever number the file held.
QString describeEverything(const TaskDocument& task) {
    for (const auto& definition : task.definitions) {
        definition->describe();
    }
    static const QRegularExpression colourText(QStringLiteral("^#[0-9a-f]{6}$"));
    for (const ColorRecord& color : task.colors) {
        if (const QString text = color.displayText(); !colourText.match(text).hasMatch()) {
            return QStringLiteral("the colour %1 shows as %2").arg(color.color).arg(text);
        }
    }
    const auto describe = [&](const IEditorItem& item) { item.describe(task); };
    task.forEachCondition(describe);
    task.forEachAction(describe);
    return {};
}

QString differenceReport(const QByteArray& saved, const QByteArray& resaved) {
    const qsizetype at =
        std::mismatch(saved.begin(), saved.end(), resaved.begin(), resaved.end()).first -
        saved.begin();
    const qsizetype from = qMax(qsizetype(0), at - 80);
    return QStringLiteral(
               "saving the reopened text changed it from byte %1:\nfirst save: %2\n"
               "second save: %3")
        .arg(at)
        .arg(QString::fromUtf8(saved.mid(from, 160)), QString::fromUtf8(resaved.mid(from, 160)));
}

}  // namespace

QString checkTaskFile(const QByteArray& input) {
    // Definitions without an id take one from the program-wide counter; starting it
    // afresh makes every input behave the same on every run.
    definition_ids::reset();
    TaskDocument opened;
    if (!opened.openText(input)) {
        return {};
    }
    if (QString failure = describeEverything(opened); !failure.isEmpty()) {
        return failure;
    }
    forgetClickColourPauses(opened);
    const QByteArray saved = opened.serialise();

    TaskDocument reopened;
    const OpenResult result = reopened.openText(saved);
    if (!result) {
        return QStringLiteral("the saved text does not open: %1").arg(result.error);
    }
    if (!result.skipped.empty()) {
        return QStringLiteral("reopening the saved text skipped %1: %2")
            .arg(result.skipped.front().where, result.skipped.front().what);
    }
    const QByteArray resaved = reopened.serialise();
    return resaved == saved ? QString() : differenceReport(saved, resaved);
}

}  // namespace autoscene::fuzz

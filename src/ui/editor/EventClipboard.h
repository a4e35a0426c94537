#pragma once
// Events travel through the clipboard as task JSON: the copied events in the default scene
// of an otherwise empty task, with the definitions they use, so that they can be pasted
// into another scene, another task or a text editor.

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "model/TaskDocument.h"

namespace autoscene::ui {

QByteArray eventsToTaskJson(const model::TaskDocument& from,
                            const std::vector<const model::EditorEvent*>& events);

// The clipboard format beside the text that names the task folder the events come from, so
// that pasting into another task can copy the image files.
inline constexpr char kTaskFolderMimeType[] = "application/x-autoscene-task-folder";

struct PastedImage {
    model::ImageRecord record;  // its file named as in the target task
    QString sourceFile;         // the file's name in the source task's image folder
};

struct PastedEvents {
    std::vector<model::EditorEvent> events;
    // Definitions, images and colours the events use that the target task lacks, to be
    // added with them.
    std::vector<std::unique_ptr<model::EditorVariable>> definitions;
    std::vector<PastedImage> images;
    std::vector<model::ColorRecord> colors;
    QString error;  // why nothing can be pasted
};

// The events of every scene of the task JSON, in order, numbered from `firstEventId`. A
// definition, image or colour they use is the target's one of the same name (and kind)
// when there is one; otherwise it is added, with a fresh id when its own is taken, and an
// image under a file name the target does not use yet.
PastedEvents eventsFromTaskJson(const QByteArray& json, const model::TaskDocument& into,
                                int firstEventId);

// Copies the pasted images' files from the source task folder into the target's image
// folder; what went wrong, or empty. Without a source folder only files the target
// already has are accepted.
QString copyImageFiles(const PastedEvents& pasted, const QString& sourceFolder,
                       const model::TaskDocument& into);

}  // namespace autoscene::ui

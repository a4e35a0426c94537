#pragma once
// What the screen tools add to a task: originals from captures, and the templates, areas
// and colours cut from an original. Files are written first; the record then goes in as
// one undoable step, so a refused edit leaves at most a file nothing names.

#include <QImage>
#include <QRect>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::ui {

class TaskEditor;

struct SavedResource {
    int id = 0;
    QString error;  // shown to the user; empty on success

    explicit operator bool() const { return error.isEmpty(); }
};

// The picture of original `id`; null when the record or its file is missing.
QImage loadOriginal(const model::TaskDocument& task, int id);

// Keeps the picture as a new original in ori/, named "<seconds>.png".
SavedResource saveOriginal(TaskEditor& editor, const QImage& picture);

// What a rectangle cut from an original becomes.
struct Cut {
    int ori = 0;
    QImage picture;  // the original's pixels
    QRect rect;      // in the original
    QString name;
};

// A template image of the rectangle, with the screen size of its original.
SavedResource saveTemplate(TaskEditor& editor, const Cut& cut);
// A crop definition: a search area, a click area or a text region.
SavedResource saveArea(TaskEditor& editor, const Cut& cut);
SavedResource saveColour(TaskEditor& editor, const QString& name, std::int64_t rgb,
                         float similarity);

// The best place outside the image's own rectangle where the image condition would find
// image `id` in the picture (at or above its similarity); nothing when it finds it there
// only. A second place is where clicks on the template go wrong.
struct OtherMatch {
    QRect rect;
    float score = 0;
    float similarity = 0;  // the image's threshold
};
// Prepared from the task on the window's thread, it may be run on another.
using OtherMatchSearch = std::function<std::optional<OtherMatch>()>;
OtherMatchSearch matchElsewhere(const model::TaskDocument& task, int id, const QImage& picture);

// 255 where the colour condition counts a pixel of the picture as the colour, else 0.
QImage colourMask(const QImage& picture, std::int64_t rgb, float similarity);
// The count the colour condition makes in `rect`; -1 when it cannot count there.
int colourCount(const QImage& picture, std::int64_t rgb, float similarity, const QRect& rect);

}  // namespace autoscene::ui

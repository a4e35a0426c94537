#pragma once
// What a probe saw of one item on one frame.

#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>
#include <vector>

namespace autoscene::probe {

struct ProbeCandidate {
    QRect rect;
    float score = 0.0f;  // similarity of a template, probability of a label box; 0 for text
    QString text;        // the label's name or the text read
    bool inArea = true;  // wholly inside the area the item searches

    bool operator==(const ProbeCandidate&) const = default;
};

struct ProbeResult {
    bool probed = false;  // false: the item does not look at the screen
    bool holds = false;   // the condition holds on the frame, or the action would act
    float threshold = 0.0f;
    std::optional<QRect> searchArea;         // nothing: the whole frame
    std::vector<ProbeCandidate> candidates;  // best first
    int count = -1;                          // pixels of a colour item's colour
    std::optional<QPoint> click;             // where an action would click
    QString reason;                          // why it does not hold; empty when it does
    // An image not found in its area is still to be looked for beyond it; until then the
    // reason is the score in the area.
    bool lookingBeyond = false;

    bool operator==(const ProbeResult&) const = default;
};

}  // namespace autoscene::probe

#pragma once
// What the save-coordinate actions share: each find is stored in a variable as a
// rectangle list, and the result reports it as "type", "variable_name", what was looked
// for, "exist", "err", "sim" and "rects".

#include <QRect>
#include <optional>
#include <vector>

#include "engine/IAction.h"

namespace autoscene::engine {
class MVVariable;
}

namespace autoscene::actions {

// What is stored for each find (`save_type`).
enum class SaveCoordKind : int { Rect = 0, Centre = 1 };

class SaveCoordAction : public engine::IAction {
protected:
    // `area`, when given, is stored in place of each find, moved with it.
    SaveCoordAction(int type, engine::MVVariable* variable, std::optional<QRect> area,
                    SaveCoordKind kind);

    // What is stored for one find at `found`: the area (drawn where the target sat at
    // `origin`) moved with the find, or the find itself; its centre alone for Centre.
    QRect saved(QPoint origin, const QRect& found) const;

    // Stores `found` when there is a variable and anything was found, and reports it;
    // `sought` is the result key and value naming what was looked for.
    void report(const std::vector<QRect>& found, float bestScore,
                const std::pair<QString, QString>& sought, const QString& error);

    bool hasVariable() const { return variable_ != nullptr; }
    static QString variableMissingText() { return QStringLiteral("variable not found"); }
    QPoint areaOrigin() const { return area_ ? area_->topLeft() : QPoint(); }

private:
    engine::MVVariable* const variable_;
    const std::optional<QRect> area_;
    const SaveCoordKind kind_;
};

}  // namespace autoscene::actions

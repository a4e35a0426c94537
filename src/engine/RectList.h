#pragma once
// Rectangle lists held in variables: rectangle texts separated by "|".

#include <QRect>
#include <QString>
#include <vector>

namespace autoscene::engine {

// Empty parts are skipped; "x,y" is a 1x1 rectangle.
std::vector<QRect> parseRectList(const QString& text);
QString formatRectList(const std::vector<QRect>& rects);

}  // namespace autoscene::engine

#pragma once
// The rectangle text form of the task file: "x,y,width,height".

#include <QRect>
#include <QString>

namespace autoscene::model {

// Full-width commas count as commas and empty parts are dropped. Two parts give a
// 1x1 rectangle at x,y; four give x,y,width,height; three or five and more leave
// width and height unset; fewer than two give an empty rectangle at 0,0. A part that
// is not a number reads as 0.
QRect parseRectText(const QString& text);

QString formatRectText(const QRect& rect);

}  // namespace autoscene::model

#pragma once
// Random draws of the run: points in rectangles, press times, delays. Each draw
// seeds a Mersenne twister from the clock, so draws on different threads never
// share a generator.

#include <QPoint>
#include <QRect>
#include <cstdint>

namespace autoscene::engine {

// Uniform in 0..n, both included; 0 for n <= 0.
std::int64_t randomUpTo(std::int64_t n);

// A point in the rectangle, edges included: left + r(width), top + r(height).
QPoint randomPointIn(const QRect& rect);

// A press time of 0 means a random 30 to 50 ms; otherwise the seconds in whole ms.
int pressTimeMs(float pressSeconds);

// Seconds of a record turned into whole milliseconds, truncated.
std::int64_t secondsToMs(float seconds);

}  // namespace autoscene::engine

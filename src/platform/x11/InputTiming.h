#pragma once
// Timing shared by both input methods.

namespace autoscene::platform::x11 {

// How long a click holds its button: a press time of 0 (or less) means a random 30 to
// 50 ms, as a person clicks; longer requests are capped at a minute.
int effectivePressMs(int requestedMs);

void sleepMs(int durationMs);

}  // namespace autoscene::platform::x11

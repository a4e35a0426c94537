#pragma once
// The test's own view of the X server, independent of the back end: plain XGetImage reads
// converted pixel by pixel, and direct window operations (unmap, raise) that a user or
// another program would do.

#include <X11/Xlib.h>

#include <cstdint>
#include <string>

#include "desktop/DesktopBackend.h"

namespace autoscene::testing {

class ReferenceScreen {
public:
    explicit ReferenceScreen(const std::string& display);
    ~ReferenceScreen();
    ReferenceScreen(const ReferenceScreen&) = delete;
    ReferenceScreen& operator=(const ReferenceScreen&) = delete;

    Display* display() const { return display_; }

    // The screen rectangle as BGRA, read with XGetImage and XGetPixel.
    platform::BgraFrame read(platform::Rect rect) const;

private:
    Display* display_ = nullptr;
};

// A borrowed view copied out with opaque alpha (views leave alpha undefined), for comparing.
platform::BgraFrame opaqueCopy(const platform::BgraView& view);

// 0xRRGGBB of a frame's pixel; ~0 outside the frame.
std::uint32_t pixelAt(const platform::BgraFrame& frame, int x, int y);

// The first differing pixel as "x,y: got 0x.., want 0x..", or empty when both frames have
// the same size and pixels.
std::string firstDifference(const platform::BgraFrame& got, const platform::BgraFrame& want);

}  // namespace autoscene::testing

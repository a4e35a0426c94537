#include "ReferenceScreen.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace autoscene::testing {

ReferenceScreen::ReferenceScreen(const std::string& display)
    : display_(XOpenDisplay(display.c_str())) {}

ReferenceScreen::~ReferenceScreen() {
    if (display_ != nullptr) {
        XCloseDisplay(display_);
    }
}

platform::BgraFrame ReferenceScreen::read(platform::Rect rect) const {
    XImage* image = XGetImage(display_, DefaultRootWindow(display_), rect.x, rect.y,
                              static_cast<unsigned>(rect.width), static_cast<unsigned>(rect.height),
                              AllPlanes, ZPixmap);
    if (image == nullptr) {
        return {};
    }
    platform::BgraFrame frame{rect.width, rect.height, rect.width * 4,
                              std::vector<std::uint8_t>(std::size_t(rect.width) * rect.height * 4)};
    for (int y = 0; y < rect.height; ++y) {
        for (int x = 0; x < rect.width; ++x) {
            // A 24-bit TrueColor visual's 0xRRGGBB, opaque, lies in memory as B, G, R, A.
            const auto bgra = std::uint32_t(0xFF000000u | (XGetPixel(image, x, y) & 0xFFFFFF));
            std::memcpy(&frame.pixels[std::size_t(y) * frame.stride + 4 * std::size_t(x)], &bgra,
                        4);
        }
    }
    XDestroyImage(image);
    return frame;
}

platform::BgraFrame opaqueCopy(const platform::BgraView& view) {
    platform::BgraFrame frame{view.width, view.height, view.width * 4,
                              std::vector<std::uint8_t>(std::size_t(view.width) * view.height * 4)};
    for (int y = 0; y < view.height; ++y) {
        std::copy_n(view.pixels + static_cast<std::size_t>(y) * view.stride, frame.stride,
                    &frame.pixels[static_cast<std::size_t>(y) * frame.stride]);
    }
    for (std::size_t alpha = 3; alpha < frame.pixels.size(); alpha += 4) {
        frame.pixels[alpha] = 0xFF;
    }
    return frame;
}

std::uint32_t pixelAt(const platform::BgraFrame& frame, int x, int y) {
    if (x < 0 || y < 0 || x >= frame.width || y >= frame.height) {
        return ~0u;
    }
    const std::uint8_t* p =
        &frame.pixels[static_cast<std::size_t>(y) * frame.stride + 4 * std::size_t(x)];
    return static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[1]) << 8 | p[0];
}

std::string firstDifference(const platform::BgraFrame& got, const platform::BgraFrame& want) {
    char text[128] = {};
    if (got.width != want.width || got.height != want.height) {
        std::snprintf(text, sizeof text, "size %dx%d, want %dx%d", got.width, got.height,
                      want.width, want.height);
        return text;
    }
    for (int y = 0; y < got.height; ++y) {
        for (int x = 0; x < got.width; ++x) {
            const std::uint8_t* a =
                &got.pixels[static_cast<std::size_t>(y) * got.stride + 4 * std::size_t(x)];
            const std::uint8_t* b =
                &want.pixels[static_cast<std::size_t>(y) * want.stride + 4 * std::size_t(x)];
            if (a[0] != b[0] || a[1] != b[1] || a[2] != b[2] || a[3] != b[3]) {
                std::snprintf(text, sizeof text, "%d,%d: got 0x%06x/%02x, want 0x%06x/%02x", x, y,
                              pixelAt(got, x, y), a[3], pixelAt(want, x, y), b[3]);
                return text;
            }
        }
    }
    return {};
}

}  // namespace autoscene::testing

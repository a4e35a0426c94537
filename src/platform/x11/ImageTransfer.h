#pragma once
// Pixel transfer from the server: through a shared-memory image that lives as long as the
// connection (MIT-SHM), or by XGetImage when the server cannot share memory with this process
// (remote display, extension missing). The pixels reach the caller as a borrowed view, straight
// out of the shared segment when the server's layout is already BGRX.

#include <X11/Xlib.h>
#include <X11/extensions/XShm.h>

#include <cstdint>
#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::x11 {

class ImageTransfer {
public:
    explicit ImageTransfer(Display* display);
    ~ImageTransfer();
    ImageTransfer(const ImageTransfer&) = delete;
    ImageTransfer& operator=(const ImageTransfer&) = delete;

    // Reads the rectangle of `drawable` (whose pixels have `visual` and `depth`) and hands it
    // to `consume`. The view's alpha bytes are whatever the server keeps there (undefined for
    // depth 24). False, and `consume` not called, when the server refused (drawable gone,
    // rectangle outside it).
    bool read(Drawable drawable, Visual* visual, int depth, Rect rect,
              const FrameConsumer& consume);

    bool usesSharedMemory() const { return shmAvailable_; }

private:
    // The shared image is made for one size, visual and depth and kept until they change.
    bool ensureSharedImage(Visual* visual, int depth, int width, int height);
    void releaseSharedImage();
    bool readShared(Drawable drawable, Visual* visual, Rect rect, const FrameConsumer& consume);
    bool readCopied(Drawable drawable, Visual* visual, Rect rect, const FrameConsumer& consume);
    void deliver(const XImage& image, const FrameConsumer& consume);

    Display* display_ = nullptr;
    bool shmAvailable_ = false;
    XShmSegmentInfo segment_{};
    XImage* shared_ = nullptr;
    Visual* sharedVisual_ = nullptr;
    int sharedDepth_ = 0;
    std::vector<std::uint8_t> converted_;  // pixels of layouts other than 32-bit BGRX
};

// A view copied into an owned frame with opaque alpha, reusing the frame's buffer.
void copyOpaque(const BgraView& view, BgraFrame& frame);

}  // namespace autoscene::platform::x11

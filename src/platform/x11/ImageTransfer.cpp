#include "x11/ImageTransfer.h"

#include <X11/Xutil.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <bit>
#include <cstddef>
#include <memory>

#include "x11/ErrorTrap.h"

namespace autoscene::platform::x11 {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000u;
// The protocol's limit on a drawable's side.
constexpr int kMaxSide = 32767;

bool isNativeBgrx(const XImage& image) {
    return image.bits_per_pixel == 32 && image.byte_order == LSBFirst &&
           image.red_mask == 0xFF0000 && image.green_mask == 0xFF00 && image.blue_mask == 0xFF;
}

std::uint8_t channel(unsigned long pixel, unsigned long mask) {
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const unsigned long maxValue = mask >> shift;
    return static_cast<std::uint8_t>(((pixel & mask) >> shift) * 255 / maxValue);
}

// The server reports no visual for a pixmap, and Xlib then leaves the colour masks zero;
// the pixmap has the pixel layout of the window it was named from.
void fillMissingMasks(XImage& image, const Visual* visual) {
    if (image.red_mask == 0 && image.green_mask == 0 && image.blue_mask == 0 && visual != nullptr) {
        image.red_mask = visual->red_mask;
        image.green_mask = visual->green_mask;
        image.blue_mask = visual->blue_mask;
    }
}

// Any Z-pixmap layout (16-bit, 24-bit packed, big-endian) to BGRA with opaque alpha.
void convertToBgra(const XImage& image, std::vector<std::uint8_t>& pixels) {
    const std::size_t stride = static_cast<std::size_t>(image.width) * 4;
    pixels.resize(stride * static_cast<std::size_t>(image.height));
    XImage& readable = const_cast<XImage&>(image);  // XGetPixel takes a non-const image
    for (int y = 0; y < image.height; ++y) {
        std::uint8_t* target = pixels.data() + static_cast<std::size_t>(y) * stride;
        for (int x = 0; x < image.width; ++x) {
            const unsigned long pixel = XGetPixel(&readable, x, y);
            target[4 * x + 0] = channel(pixel, image.blue_mask);
            target[4 * x + 1] = channel(pixel, image.green_mask);
            target[4 * x + 2] = channel(pixel, image.red_mask);
            target[4 * x + 3] = 0xFF;
        }
    }
}

struct ImageDeleter {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

}  // namespace

void copyOpaque(const BgraView& view, BgraFrame& frame) {
    frame.width = view.width;
    frame.height = view.height;
    frame.stride = view.width * 4;
    frame.pixels.resize(static_cast<std::size_t>(frame.stride) * frame.height);
    const int width = view.width;  // a local bound: stores to the frame cannot change it
    for (int y = 0; y < view.height; ++y) {
        // Not aliased, which lets the compiler vectorise the copy.
        const auto* __restrict source = reinterpret_cast<const std::uint32_t*>(
            view.pixels + static_cast<std::ptrdiff_t>(y) * view.stride);
        auto* __restrict target = reinterpret_cast<std::uint32_t*>(
            frame.pixels.data() + static_cast<std::ptrdiff_t>(y) * frame.stride);
        for (int x = 0; x < width; ++x) {
            target[x] = source[x] | kOpaque;
        }
    }
}

ImageTransfer::ImageTransfer(Display* display) : display_(display) {
    shmAvailable_ = XShmQueryExtension(display_) == True;
}

ImageTransfer::~ImageTransfer() {
    releaseSharedImage();
}

bool ImageTransfer::read(Drawable drawable, Visual* visual, int depth, Rect rect,
                         const FrameConsumer& consume) {
    if (rect.width <= 0 || rect.height <= 0 || rect.width > kMaxSide || rect.height > kMaxSide) {
        return false;
    }
    if (shmAvailable_ && ensureSharedImage(visual, depth, rect.width, rect.height)) {
        return readShared(drawable, visual, rect, consume);
    }
    return readCopied(drawable, visual, rect, consume);
}

bool ImageTransfer::ensureSharedImage(Visual* visual, int depth, int width, int height) {
    if (shared_ != nullptr && shared_->width == width && shared_->height == height &&
        sharedVisual_ == visual && sharedDepth_ == depth) {
        return true;
    }
    releaseSharedImage();
    XImage* image =
        XShmCreateImage(display_, visual, static_cast<unsigned>(depth), ZPixmap, nullptr, &segment_,
                        static_cast<unsigned>(width), static_cast<unsigned>(height));
    if (image == nullptr) {
        return false;
    }
    const std::size_t bytes = static_cast<std::size_t>(image->bytes_per_line) * image->height;
    segment_.shmid = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    void* address =
        segment_.shmid < 0 ? reinterpret_cast<void*>(-1) : shmat(segment_.shmid, nullptr, 0);
    bool attached = false;
    if (address != reinterpret_cast<void*>(-1)) {
        segment_.shmaddr = static_cast<char*>(address);
        segment_.readOnly = False;
        ErrorTrap trap(display_);
        attached = XShmAttach(display_, &segment_) == True && !trap.failed();
    }
    if (segment_.shmid >= 0) {
        // Marked for removal now so that the segment goes away with its last user, even when
        // this process dies without cleaning up.
        shmctl(segment_.shmid, IPC_RMID, nullptr);
    }
    if (!attached) {
        if (address != reinterpret_cast<void*>(-1)) {
            shmdt(address);
            // A remote server accepts the extension but cannot reach our memory; a segment
            // this process could not get (too large) only fails this read.
            shmAvailable_ = false;
        }
        XDestroyImage(image);  // no data of its own yet
        segment_ = {};
        return false;
    }
    image->data = segment_.shmaddr;
    shared_ = image;
    sharedVisual_ = visual;
    sharedDepth_ = depth;
    return true;
}

void ImageTransfer::releaseSharedImage() {
    if (shared_ == nullptr) {
        return;
    }
    XShmDetach(display_, &segment_);
    XSync(display_, False);
    shmdt(segment_.shmaddr);
    shared_->data = nullptr;  // the segment is not Xlib's to free
    XDestroyImage(shared_);
    shared_ = nullptr;
    segment_ = {};
}

bool ImageTransfer::readShared(Drawable drawable, Visual* visual, Rect rect,
                               const FrameConsumer& consume) {
    // A refused request makes the reply fail, so no extra round trip is needed to see it.
    if (XShmGetImage(display_, drawable, shared_, rect.x, rect.y, AllPlanes) != True) {
        return false;
    }
    fillMissingMasks(*shared_, visual);
    deliver(*shared_, consume);
    return true;
}

bool ImageTransfer::readCopied(Drawable drawable, Visual* visual, Rect rect,
                               const FrameConsumer& consume) {
    const std::unique_ptr<XImage, ImageDeleter> image(
        XGetImage(display_, drawable, rect.x, rect.y, static_cast<unsigned>(rect.width),
                  static_cast<unsigned>(rect.height), AllPlanes, ZPixmap));
    if (!image) {
        return false;
    }
    fillMissingMasks(*image, visual);
    deliver(*image, consume);
    return true;
}

void ImageTransfer::deliver(const XImage& image, const FrameConsumer& consume) {
    if (isNativeBgrx(image)) {
        consume(BgraView{image.width, image.height, image.bytes_per_line,
                         reinterpret_cast<const std::uint8_t*>(image.data)});
        return;
    }
    convertToBgra(image, converted_);
    consume(BgraView{image.width, image.height, image.width * 4, converted_.data()});
}

}  // namespace autoscene::platform::x11

#include "win32/GdiCapture.h"

#include "win32/MessageParams.h"
#include "win32/Win32Handles.h"

namespace autoscene::platform::win32 {
namespace {

// Guards against sizes whose pixel buffers would not fit an int stride or be absurd.
constexpr int kMaxSidePixels = 32768;

bool readBitmap(HDC dc, HBITMAP bitmap, int width, int height, int bitCount,
                std::vector<std::uint8_t>& bits, int& stride) {
    stride = ((width * bitCount + 31) / 32) * 4;
    bits.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down rows
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(bitCount);
    info.bmiHeader.biCompression = BI_RGB;
    return GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), bits.data(), &info,
                     DIB_RGB_COLORS) == height;
}

BgraFrame rgbaFromBgrRows(const std::vector<std::uint8_t>& bgr, int width, int height,
                          int bgrStride) {
    BgraFrame frame;
    frame.width = width;
    frame.height = height;
    frame.stride = width * 4;
    frame.pixels.resize(static_cast<std::size_t>(frame.stride) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* in = bgr.data() + static_cast<std::size_t>(y) * bgrStride;
        std::uint8_t* out = frame.pixels.data() + static_cast<std::size_t>(y) * frame.stride;
        for (int x = 0; x < width; ++x, in += 3, out += 4) {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
            out[3] = 0xFF;
        }
    }
    return frame;
}

}  // namespace

BgraFrame copyDeviceRegion(HDC source, const Rect& region, int bitsPerPixel) {
    if (source == nullptr || region.width <= 0 || region.height <= 0 ||
        region.width > kMaxSidePixels || region.height > kMaxSidePixels) {
        return {};
    }
    HDC memoryDc = CreateCompatibleDC(source);
    if (memoryDc == nullptr) {
        return {};
    }
    const ScopeExit deleteMemoryDc([memoryDc] { DeleteDC(memoryDc); });
    HBITMAP bitmap = CreateCompatibleBitmap(source, region.width, region.height);
    if (bitmap == nullptr) {
        return {};
    }
    const ScopeExit deleteBitmap([bitmap] { DeleteObject(bitmap); });
    {
        HGDIOBJ previous = SelectObject(memoryDc, bitmap);
        const ScopeExit restore([memoryDc, previous] { SelectObject(memoryDc, previous); });
        if (!BitBlt(memoryDc, 0, 0, region.width, region.height, source, region.x, region.y,
                    SRCCOPY)) {
            return {};
        }
    }
    const int bitCount = bitsPerPixel == 32 ? 32 : 24;
    std::vector<std::uint8_t> bits;
    int stride = 0;
    if (!readBitmap(memoryDc, bitmap, region.width, region.height, bitCount, bits, stride)) {
        return {};
    }
    if (bitCount == 24) {
        return rgbaFromBgrRows(bits, region.width, region.height, stride);
    }
    BgraFrame frame;
    frame.width = region.width;
    frame.height = region.height;
    frame.stride = stride;
    frame.pixels = std::move(bits);
    return frame;
}

BgraFrame captureFromScreen(HWND window, const LogSink& log) {
    HDC screen = GetDC(nullptr);
    if (screen == nullptr) {
        return {};
    }
    const ScopeExit releaseScreen([screen] { ReleaseDC(nullptr, screen); });
    const int screenWidth = GetDeviceCaps(screen, HORZRES);
    const int screenHeight = GetDeviceCaps(screen, VERTRES);
    const int bitsPerPixel = GetDeviceCaps(screen, BITSPIXEL);
    if (window == nullptr) {
        return copyDeviceRegion(screen, Rect{0, 0, screenWidth, screenHeight}, bitsPerPixel);
    }
    if (!IsWindow(window) || !IsWindowVisible(window)) {
        return {};
    }
    RECT client{};
    POINT origin{0, 0};
    if (!GetClientRect(window, &client) || !ClientToScreen(window, &origin)) {
        return {};
    }
    const int clientWidth = client.right - client.left;
    const int clientHeight = client.bottom - client.top;
    if (log) {
        log("lpRect:" + std::to_string(clientWidth) + "x" + std::to_string(clientHeight) +
            " toScreen:" + std::to_string(origin.x) + "x" + std::to_string(origin.y));
    }
    const Rect crop = screenCropOfClient(Point{origin.x, origin.y}, clientWidth, clientHeight,
                                         screenWidth, screenHeight);
    return copyDeviceRegion(screen, crop, bitsPerPixel);
}

BgraFrame captureFromWindowDc(HWND window) {
    if (!IsWindow(window)) {
        return {};
    }
    HDC windowDc = GetDC(window);
    if (windowDc == nullptr) {
        return {};
    }
    const ScopeExit releaseWindowDc([window, windowDc] { ReleaseDC(window, windowDc); });
    RECT client{};
    if (!GetClientRect(window, &client)) {
        return {};
    }
    return copyDeviceRegion(windowDc, Rect{0, 0, client.right, client.bottom},
                            GetDeviceCaps(windowDc, BITSPIXEL));
}

}  // namespace autoscene::platform::win32

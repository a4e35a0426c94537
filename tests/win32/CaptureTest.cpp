#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <tuple>

#include "RecorderLayout.h"
#include "TestSupport.h"
#include "win32/GdiCapture.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

// Counts pixels of the frame that differ from the recorder's pattern, the frame's
// column 0 being client column firstClientColumn.
int mismatches(const BgraFrame& frame, int firstClientColumn, int columns) {
    int wrong = 0;
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < columns; ++x) {
            const int clientX = x + firstClientColumn;
            std::uint32_t bgra = 0;
            std::memcpy(&bgra, frame.pixels.data() + std::size_t(y) * frame.stride + x * 4, 4);
            // GDI leaves alpha undefined.
            if ((bgra & 0xFFFFFFu) != patternBgra(clientX, y, windowIndexAt(clientX, y))) {
                ++wrong;
            }
        }
    }
    return wrong;
}

class CaptureTest : public RecorderTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(RecorderTest::SetUp());
        SetForegroundWindow(recorder.top());
        // Painting happens in the recorder's own time.
        waitUntil([this] { return mismatches(backend.capture(top(), true), 0, 10) == 0; });
    }

    // Places the client origin at the given screen point.
    void moveClientTo(int x, int y) {
        RECT frame{0, 0, 0, 0};
        AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
        SetWindowPos(recorder.top(), nullptr, x + frame.left, y + frame.top, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER);
        waitUntil([&] {
            POINT origin{0, 0};
            ClientToScreen(recorder.top(), &origin);
            return origin.x == x && origin.y == y;
        });
        // The recorder repaints the parts that came on screen in its own time.
        const int firstColumn = x < 0 ? -x : 0;
        const int visibleColumns =
            std::min(kClientWidth, GetSystemMetrics(SM_CXSCREEN) - std::max(x, 0)) - firstColumn;
        waitUntil([&] {
            const BgraFrame frame = backend.capture(top(), false);
            return frame.width >= visibleColumns &&
                   mismatches(frame, firstColumn, visibleColumns) == 0;
        });
    }
};

}  // namespace

TEST_F(CaptureTest, BothModesGiveTheClientAreaPixelForPixelAndTwentyFourBitsAreConverted) {
    for (const bool windowDc : {true, false}) {
        SCOPED_TRACE(windowDc ? "window DC" : "screen");
        log.clear();
        const BgraFrame frame = backend.capture(top(), windowDc);
        ASSERT_EQ(std::tuple(frame.width, frame.height, frame.stride),
                  std::tuple(kClientWidth, kClientHeight, kClientWidth * 4));
        EXPECT_EQ(mismatches(frame, 0, frame.width), 0);
    }
    // The screen capture logs the client rectangle and its origin.
    POINT origin{0, 0};
    ClientToScreen(recorder.top(), &origin);
    EXPECT_EQ(log, (Lines{"lpRect:400x300 toScreen:" + std::to_string(origin.x) + "x" +
                          std::to_string(origin.y)}));

    SCOPED_TRACE("24-bit devices come out with red and blue exchanged");
    HDC windowDc = GetDC(recorder.top());
    const Rect region{40, 30, 123, 45};  // odd width: padded 24-bit rows
    const BgraFrame straight = copyDeviceRegion(windowDc, region, 32);
    const BgraFrame converted = copyDeviceRegion(windowDc, region, 24);
    ReleaseDC(recorder.top(), windowDc);
    ASSERT_EQ(std::tuple(converted.width, converted.height, converted.stride),
              std::tuple(region.width, region.height, region.width * 4));
    std::vector<std::uint8_t> swapped = straight.pixels;
    for (std::size_t i = 0; i < swapped.size(); i += 4) {
        std::swap(swapped[i], swapped[i + 2]);
        swapped[i + 3] = 0xFF;
    }
    EXPECT_TRUE(converted.pixels == swapped);
}

TEST_F(CaptureTest, WholeScreenMissingWindowsNoGdiObjectsLeftAndTheScreenEdgesCut) {
    const BgraFrame screen = backend.capture(0, false);
    EXPECT_EQ(std::pair(screen.width, screen.height),
              std::pair(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)));
    HWND hidden = FindWindowW(kRecorderClass, kHiddenTitle);
    ASSERT_NE(hidden, nullptr);
    EXPECT_TRUE(backend.capture(toHandle(hidden), false).empty());
    EXPECT_TRUE(backend.capture(0xDEAD0, false).empty());

    // Windows counts a process's GDI objects; Wine answers 0 there but accepts a bare
    // table index as a handle, so its live objects can be counted slot by slot.
    const auto liveGdiObjects = [] {
        const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        if (counted != 0) {
            return counted;
        }
        DWORD live = 0;
        for (std::uintptr_t slot = 1; slot <= 0xFFFF; ++slot) {
            live += GetObjectType(reinterpret_cast<HGDIOBJ>(slot)) != 0;
        }
        return live;
    };
    backend.capture(top(), true);
    backend.capture(top(), false);
    const DWORD before = liveGdiObjects();
    ASSERT_GT(before, 0u);
    int emptyFrames = 0;
    for (int round = 0; round < 20; ++round) {
        emptyFrames += backend.capture(top(), true).empty();
        emptyFrames += backend.capture(top(), false).empty();
        emptyFrames += backend.capture(0, false).empty();
        emptyFrames += backend.capture(0xDEAD0, true).empty() ? 0 : 1;
    }
    EXPECT_EQ(emptyFrames, 0);
    EXPECT_EQ(liveGdiObjects(), before);

    SCOPED_TRACE("the screen capture is cut at the right edge and shifted at the left");
    moveClientTo(GetSystemMetrics(SM_CXSCREEN) - 150, 100);
    BgraFrame frame = backend.capture(top(), false);
    ASSERT_EQ(std::pair(frame.width, frame.height), std::pair(150, kClientHeight));
    EXPECT_EQ(mismatches(frame, 0, frame.width), 0);

    // Left of the screen: the frame starts at screen column 0 with the full client width,
    // so its first columns show client column 60 onwards.
    moveClientTo(-60, 100);
    frame = backend.capture(top(), false);
    ASSERT_EQ(frame.width, kClientWidth);
    EXPECT_EQ(mismatches(frame, 60, kClientWidth - 60), 0);
}

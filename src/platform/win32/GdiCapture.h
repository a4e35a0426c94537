#pragma once
// GDI capture: the screen cropped to a window's client area (foreground) and a
// window's own device context (background).

#include <windows.h>

#include "desktop/DesktopBackend.h"
#include "win32/LogSink.h"

namespace autoscene::platform::win32 {

// Copies a region of a device context. 32 bits per pixel are taken as they are; any
// other depth is read as 24-bit BGR and stored as RGBA with opaque alpha (red and blue
// trade places), so frames match the templates that were captured from such devices.
BgraFrame copyDeviceRegion(HDC source, const Rect& region, int bitsPerPixel);

// window null: the whole primary screen. Otherwise the client area cut out of the
// screen; empty when the window is gone or hidden.
BgraFrame captureFromScreen(HWND window, const LogSink& log);

// The client area through the window's own device context, so the window may be covered.
BgraFrame captureFromWindowDc(HWND window);

}  // namespace autoscene::platform::win32

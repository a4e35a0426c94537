#pragma once
// Reading windows: the candidate top-level windows, descendants, titles, classes and
// rectangles. Every read survives the window vanishing midway (it then reads as absent).

#include <X11/Xlib.h>

#include <optional>
#include <string>
#include <vector>

#include "desktop/DesktopBackend.h"
#include "x11/Connection.h"

namespace autoscene::platform::x11 {

bool windowExists(Connection& connection, Window window);
bool isViewable(Connection& connection, Window window);

// Visible top-level windows of other processes, the active window first, then from the top
// of the stacking order down. With a window manager these come from its stacking list;
// without one (a bare X server) they are the root's mapped children.
std::vector<Window> topLevelCandidates(Connection& connection);

// All descendants, depth first, each parent before its children.
std::vector<Window> descendants(Connection& connection, Window window);

// _NET_WM_NAME (UTF-8), else WM_NAME converted to UTF-8.
std::string windowTitle(Connection& connection, Window window);
// The class part of WM_CLASS.
std::string windowClass(Connection& connection, Window window);

// The window's own rectangle with its origin in `reference`'s coordinates.
std::optional<Rect> rectRelativeTo(Connection& connection, Window window, Window reference);

}  // namespace autoscene::platform::x11

#pragma once
// Finding the windows a task drives: candidates in z-order, query matching, children.

#include <windows.h>

#include <string>
#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::win32 {

// Window text and class name in the ANSI code page, read into 260-character buffers.
std::string windowText(HWND window);
std::string windowClassName(HWND window);

// From the foreground window down the z-order; windows of this process and invisible
// windows are left out.
std::vector<HWND> candidateTopLevelWindows();

// Every descendant once, in enumeration order.
std::vector<HWND> descendantWindows(HWND window);

bool matchesTopLevel(HWND window, const WindowQuery& query);

// The first descendant whose text and class equal the query's child fields (empty fields
// match anything); null when the query names no child or none matches.
HWND findMatchingChild(HWND window, const WindowQuery& query);

}  // namespace autoscene::platform::win32

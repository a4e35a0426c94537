/* Autoscene plug-in interface: what a plug-in library exports and what the host passes it.
 *
 * Plain C, usable from C and C++, the same on Linux (.so) and Windows (.dll). Every entry
 * point uses the platform's C calling convention and is optional: the host resolves each by
 * name and skips the ones a library does not export.
 *
 * Two kinds of library, which may be one and the same:
 *
 *  - A background plug-in stands in for the host's own capture and input of window targets.
 *    A task names it under "func_plugin_file" and ticks the services it uses under
 *    "enabled_plugin_func". Order of calls: mv_global_init once after loading; mv_init when a
 *    window target starts and mv_uninit when it ends; mv_capture_info + mv_capture before
 *    each cycle; the input functions per action; mv_global_uninit before unloading.
 *
 *  - An action plug-in offers named functions that a task calls through its plug-in
 *    actions. plugin_init is called when a run starts, plugin_uninit when it ends; the host
 *    unloads the library after every run and loads it again for the next one.
 *
 * Threads: functions are called from the run's worker threads, one per target, possibly at
 * the same time; keep them thread-safe when a task runs several targets in parallel.
 *
 * Memory: every name, value and node of a result chain must come from malloc() of the C
 * runtime the host uses (glibc on Linux, msvcrt.dll on Windows, which mingw-w64 links by
 * default); the host releases them with free(). The host owns the parameter chain and frees
 * it after the call: never free or keep it.
 *
 * A plug-in that crashes inside its own code takes the host process with it: the host
 * checks everything a plug-in hands back, but cannot protect itself from the library's
 * own faults.
 */
#ifndef AUTOSCENE_PLUGIN_H
#define AUTOSCENE_PLUGIN_H

#include <stdint.h>

#ifdef _WIN32
#define MV_EXPORT __declspec(dllexport)
#define MV_CALL __cdecl
#else
#define MV_EXPORT __attribute__((visibility("default")))
#define MV_CALL
#endif

#ifdef __cplusplus
#define MV_API extern "C" MV_EXPORT
#else
#define MV_API MV_EXPORT
#endif

/* Version of this interface. A library may export mv_plugin_abi returning it; a library
 * that exports another number is not loaded. */
#define MV_PLUGIN_ABI 1

/* The header is C: `typedef` and `(void)` stay, whatever C++ checks prefer.
 * NOLINTBEGIN(modernize-use-using,modernize-redundant-void-arg) */

/* A native window: an X11 Window id on Linux, an HWND on Windows. */
typedef uintptr_t mv_handle;

/* One UTF-16 code unit. On Windows this is wchar_t; elsewhere wchar_t has 32 bits, so the
 * host passes 16-bit units there too and never wchar_t. */
typedef uint16_t mv_char16;

/* A name/value pair in a chain; `next` is null at the end. Three pointer-sized fields. */
typedef struct mv_node {
    char* name;
    char* value;
    struct mv_node* next;
} mv_node;

/* The current screen image of the calling target: 8-bit pixels, rows top-down and packed
 * (width * channels bytes per row), 3 channels in B, G, R order. `data` is valid during the
 * call only; it is null with width and height 0 when the target has no frame. */
typedef struct mv_image {
    const unsigned char* data;
    int32_t width;
    int32_t height;
    int32_t channels;
} mv_image;

/* An action function, exported under the name the description file gives it.
 *
 * `params` holds one node per input parameter in ascending order of the parameter names
 * (variables already replaced by their values), then one node per choice parameter in
 * ascending name order (the chosen option). Names and values are UTF-8.
 *
 * Returns a chain whose nodes name the results: a node whose name matches an output of the
 * calling action sets that output's variable to the node's value; other nodes are ignored.
 * Result names are read in the system's 8-bit code page (UTF-8 on Linux, the ANSI code page
 * on Windows), values as UTF-8. Null means no results. */
typedef mv_node*(MV_CALL* mv_action_function)(const mv_image* image, const mv_node* params);

typedef int(MV_CALL* mv_plugin_abi_function)(void);

/* Action plug-ins: called once per run, before the first and after the last call. */
typedef void(MV_CALL* plugin_init_function)(void);
typedef void(MV_CALL* plugin_uninit_function)(void);

/* Background plug-ins. Coordinates are client coordinates of the window passed as handle;
 * when an action's point lies in the task's named child window, the host passes the child
 * and the point in the child's client area. Results marked "ignored" may be anything. */

/* Once after loading and once before unloading. */
typedef void(MV_CALL* mv_global_init_function)(void);
typedef void(MV_CALL* mv_global_uninit_function)(void);
/* When a window target starts and ends. */
typedef void(MV_CALL* mv_init_function)(mv_handle window);
typedef void(MV_CALL* mv_uninit_function)(mv_handle window);

/* Before each capture: nonzero (only the low byte counts) when an image can be delivered,
 * with its size and 3 (R, G, B) or 4 (R, G, B, A) channels. Anything else means no frame,
 * and mv_capture is not called. */
typedef int(MV_CALL* mv_capture_info_function)(mv_handle window, int* width, int* height,
                                               int* channels);
/* Fills `buffer` (height * width * channels bytes, rows top-down and packed). */
typedef void(MV_CALL* mv_capture_function)(mv_handle window, unsigned char* buffer, int size);

/* Buttons: 1 left, 2 right. Every mouse action moves first; a click is down, the action's
 * hold time, then up. */
typedef void(MV_CALL* mv_mouse_down_function)(mv_handle window, int button, int x, int y);
typedef void(MV_CALL* mv_mouse_move_function)(mv_handle window, int x, int y);
typedef void(MV_CALL* mv_mouse_up_function)(mv_handle window, int button);
/* `delta` in wheel units of 120 per notch, positive away from the user. */
typedef void(MV_CALL* mv_mouse_wheel_function)(mv_handle window, int delta, int x, int y);
/* Windows virtual-key codes on every platform. */
typedef void(MV_CALL* mv_key_down_function)(mv_handle window, int key);
typedef void(MV_CALL* mv_key_up_function)(mv_handle window, int key);
/* Zero-terminated UTF-16 text. */
typedef void(MV_CALL* mv_input_text_function)(mv_handle window, const mv_char16* text);

/* NOLINTEND(modernize-use-using,modernize-redundant-void-arg) */

#endif /* AUTOSCENE_PLUGIN_H */

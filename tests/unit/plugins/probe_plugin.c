/* A plug-in that misbehaves on request, for the host's tests: both kinds of exports, and
 * probe_ functions through which a test sets what the capture reports and reads what the
 * plug-in saw. Lifecycle calls go to the file $PROBE_PLUGIN_LOG, which outlives unloading. */
#define _GNU_SOURCE
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "autoscene_plugin.h"

static int info_result = 1, info_width = 4, info_height = 3, info_channels = 3;
static char events[8192];

/* Appends a line to the events, cut short once they are full. */
static void note(const char* format, ...) {
    const size_t room = sizeof events - strlen(events) - 1; /* one byte kept for the newline */
    va_list args;
    va_start(args, format);
    vsnprintf(events + strlen(events), room, format, args);
    va_end(args);
    strcat(events, room > 0 ? "\n" : "");
}

static void log_lifecycle(const char* line) {
    const char* path = getenv("PROBE_PLUGIN_LOG");
    FILE* file = path ? fopen(path, "ab") : NULL;
    if (file) {
        fprintf(file, "%s\n", line);
        fclose(file);
    }
}

static mv_node* node(const char* name, const char* value, mv_node* next) {
    mv_node* out = (mv_node*)malloc(sizeof(mv_node));
    out->name = name ? strdup(name) : NULL;
    out->value = value ? strdup(value) : NULL;
    out->next = next;
    return out;
}

MV_API void probe_set_capture(int result, int width, int height, int channels) {
    info_result = result;
    info_width = width;
    info_height = height;
    info_channels = channels;
    events[0] = '\0';
}

MV_API const char* probe_events(void) {
    return events;
}

MV_API void plugin_init(void) {
    log_lifecycle("plugin_init");
}

MV_API void plugin_uninit(void) {
    log_lifecycle("plugin_uninit");
}

/* One result per parameter, named after it, and "order" with the names as they came. */
MV_API mv_node* echo(const mv_image* image, const mv_node* params) {
    (void)image;
    char order[1024] = "";
    mv_node* results = NULL;
    for (const mv_node* param = params; param; param = param->next) {
        results = node(param->name, param->value, results);
        if (strlen(order) + strlen(param->name) + 2 < sizeof order) {
            strcat(order, order[0] ? "," : "");
            strcat(order, param->name);
        }
    }
    return node("order", order, results);
}

MV_API mv_node* nothing(const mv_image* image, const mv_node* params) {
    (void)image, (void)params;
    return NULL;
}

/* Nodes without name or value around one good node and one nobody asked for. */
MV_API mv_node* holes(const mv_image* image, const mv_node* params) {
    (void)image, (void)params;
    return node("out", NULL,
                node(NULL, "no name", node("out", "good", node("unasked", "x", NULL))));
}

MV_API mv_node* long_chain(const mv_image* image, const mv_node* params) {
    (void)image, (void)params;
    mv_node* chain = NULL;
    char value[16];
    for (int i = 9999; i >= 0; --i) {
        snprintf(value, sizeof value, "%d", i);
        chain = node("out", value, chain);
    }
    return chain;
}

MV_API mv_node* circular(const mv_image* image, const mv_node* params) {
    (void)image, (void)params;
    mv_node* last = node("out", "third", NULL);
    mv_node* first = node("out", "first", node("out", "second", last));
    last->next = first;
    return first;
}

/* "width x height x channels" and the first pixel's bytes. */
MV_API mv_node* frame_info(const mv_image* image, const mv_node* params) {
    (void)params;
    char text[64];
    snprintf(text, sizeof text, "%dx%dx%d", image->width, image->height, image->channels);
    char pixel[32] = "";
    if (image->data) {
        snprintf(pixel, sizeof pixel, "%d,%d,%d", image->data[0], image->data[1], image->data[2]);
    }
    return node("size", text, node("pixel", pixel, NULL));
}

MV_API int mv_capture_info(mv_handle window, int* width, int* height, int* channels) {
    (void)window;
    *width = info_width;
    *height = info_height;
    *channels = info_channels;
    return info_result;
}

typedef unsigned long long ull;

/* Pixel (x, y) channel c holds x + 10 y + 100 c. */
MV_API void mv_capture(mv_handle window, unsigned char* buffer, int size) {
    note("capture %llu", (ull)window);
    for (int i = 0; i < size; ++i) {
        const int pixel = i / info_channels;
        buffer[i] = (unsigned char)(pixel % info_width + 10 * (pixel / info_width) +
                                    100 * (i % info_channels));
    }
}

/* The input calls only note what they were given. */
#define NOTED(function, parameters, format, ...) \
    MV_API void function parameters {            \
        note(format, (ull)window, __VA_ARGS__);  \
    }
NOTED(mv_mouse_move, (mv_handle window, int x, int y), "move %llu %d %d", x, y)
NOTED(mv_mouse_down, (mv_handle window, int b, int x, int y), "down %llu %d %d %d", b, x, y)
NOTED(mv_mouse_up, (mv_handle window, int button), "up %llu %d", button)
NOTED(mv_mouse_wheel, (mv_handle window, int d, int x, int y), "wheel %llu %d %d %d", d, x, y)
NOTED(mv_key_down, (mv_handle window, int key), "key_down %llu %d", key)
NOTED(mv_key_up, (mv_handle window, int key), "key_up %llu %d", key)

MV_API void mv_input_text(mv_handle window, const mv_char16* text) {
    int length = 0;
    while (text[length]) {
        ++length;
    }
    note("text %llu %d units, first %u", (ull)window, length, length ? (unsigned)text[0] : 0u);
}

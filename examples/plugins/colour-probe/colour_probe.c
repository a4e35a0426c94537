/* An action plug-in in plain C that builds for Linux and Windows alike: average_color
 * returns the mean colour of a screen region as "#RRGGBB" ("color") and how many of its
 * pixels lie within "tolerance" (0-255 per channel, default 0) of the colour given as
 * "match" ("count", decimal). The region is "x,y,width,height", clipped to the frame; no
 * region means the whole frame. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "autoscene_plugin.h"

static char* copy_text(const char* text) {
    char* copy = (char*)malloc(strlen(text) + 1);
    if (copy) {
        strcpy(copy, text);
    }
    return copy;
}

/* Prepends a node; on allocation failure the chain stays as it was. */
static mv_node* prepend(mv_node* chain, const char* name, const char* value) {
    mv_node* node = (mv_node*)malloc(sizeof(mv_node));
    if (!node) {
        return chain;
    }
    node->name = copy_text(name);
    node->value = copy_text(value);
    node->next = chain;
    return node;
}

static const char* parameter(const mv_node* params, const char* name) {
    for (const mv_node* node = params; node; node = node->next) {
        if (node->name && node->value && strcmp(node->name, name) == 0) {
            return node->value;
        }
    }
    return NULL;
}

static int clamp(int value, int low, int high) {
    return value < low ? low : value > high ? high : value;
}

static int distance(int a, int b) {
    return a > b ? a - b : b - a;
}

MV_API int MV_CALL mv_plugin_abi(void) {
    return MV_PLUGIN_ABI;
}

MV_API mv_node* MV_CALL average_color(const mv_image* image, const mv_node* params) {
    if (!image || !image->data || image->width <= 0 || image->height <= 0 || image->channels < 3) {
        return NULL;
    }
    int x = 0;
    int y = 0;
    int width = image->width;
    int height = image->height;
    const char* region = parameter(params, "region");
    if (region && sscanf(region, "%d,%d,%d,%d", &x, &y, &width, &height) != 4) {
        x = y = 0;
        width = image->width;
        height = image->height;
    }
    const int left = clamp(x, 0, image->width);
    const int top = clamp(y, 0, image->height);
    const int right = clamp(x + width, left, image->width);
    const int bottom = clamp(y + height, top, image->height);

    unsigned int match_b = 0, match_g = 0, match_r = 0;
    const char* match = parameter(params, "match");
    const int matching = match && sscanf(match, "#%2x%2x%2x", &match_r, &match_g, &match_b) == 3;
    const char* tolerance_text = parameter(params, "tolerance");
    const int tolerance = tolerance_text ? atoi(tolerance_text) : 0;

    double sum[3] = {0, 0, 0};
    long count = 0;
    for (int row = top; row < bottom; ++row) {
        const unsigned char* pixel =
            image->data + ((size_t)row * (size_t)image->width + (size_t)left) * image->channels;
        for (int column = left; column < right; ++column, pixel += image->channels) {
            sum[0] += pixel[0];
            sum[1] += pixel[1];
            sum[2] += pixel[2];
            if (matching && distance(pixel[0], (int)match_b) <= tolerance &&
                distance(pixel[1], (int)match_g) <= tolerance &&
                distance(pixel[2], (int)match_r) <= tolerance) {
                ++count;
            }
        }
    }
    const double pixels = (double)(right - left) * (bottom - top);
    char color[8] = "";
    if (pixels > 0) {
        snprintf(color, sizeof color, "#%02X%02X%02X", (unsigned)(sum[2] / pixels + 0.5),
                 (unsigned)(sum[1] / pixels + 0.5), (unsigned)(sum[0] / pixels + 0.5));
    }
    char counted[24];
    snprintf(counted, sizeof counted, "%ld", count);
    return prepend(prepend(NULL, "count", counted), "color", color);
}

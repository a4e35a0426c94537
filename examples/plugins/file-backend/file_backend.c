/* A background plug-in that captures from a picture file and writes the input it receives
 * to a log: a stand-in target for tests and demos, and a template for real plug-ins.
 *
 * Its folder is $FILE_BACKEND_DIR, or the working directory. Each capture reads
 * capture.ppm there (binary PPM, "P6", 8-bit RGB), so another program may replace the file
 * between cycles; every call is appended to input.log as one line. Only the C runtime is
 * used, so the same file builds for Linux and, with mingw-w64, for Windows. */
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "autoscene_plugin.h"

static char folder[1024] = ".";

static void path_of(char* out, size_t size, const char* name) {
    snprintf(out, size, "%s/%s", folder, name);
}

static void log_line(const char* format, ...) {
    char path[1100];
    path_of(path, sizeof path, "input.log");
    FILE* file = fopen(path, "ab");
    if (!file) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    vfprintf(file, format, arguments);
    va_end(arguments);
    fputc('\n', file);
    fclose(file);
}

/* Skips white space and # comments, then reads one decimal number of the PPM header. */
static int read_header_number(FILE* file, int* out) {
    int c = fgetc(file);
    while (c == '#' || c == ' ' || c == '\t' || c == '\r' || c == '\n') {
        if (c == '#') {
            while (c != '\n' && c != EOF) {
                c = fgetc(file);
            }
        }
        c = fgetc(file);
    }
    long value = 0;
    int digits = 0;
    while (c >= '0' && c <= '9' && value < 100000) {
        value = value * 10 + (c - '0');
        ++digits;
        c = fgetc(file);
    }
    *out = (int)value;
    return digits > 0 && value < 100000;
}

/* Opens capture.ppm positioned at its first pixel; null unless it is an 8-bit P6 file. */
static FILE* open_capture(int* width, int* height) {
    char path[1100];
    path_of(path, sizeof path, "capture.ppm");
    FILE* file = fopen(path, "rb");
    if (!file) {
        return NULL;
    }
    int maxval = 0;
    if (fgetc(file) != 'P' || fgetc(file) != '6' || !read_header_number(file, width) ||
        !read_header_number(file, height) || !read_header_number(file, &maxval) || maxval != 255) {
        fclose(file);
        return NULL;
    }
    return file;
}

MV_API int MV_CALL mv_plugin_abi(void) {
    return MV_PLUGIN_ABI;
}

MV_API void MV_CALL mv_global_init(void) {
    const char* dir = getenv("FILE_BACKEND_DIR");
    if (dir && *dir && strlen(dir) < sizeof folder) {
        strcpy(folder, dir);
    }
    log_line("global_init");
}

MV_API void MV_CALL mv_global_uninit(void) {
    log_line("global_uninit");
}

MV_API void MV_CALL mv_init(mv_handle window) {
    log_line("init %llu", (unsigned long long)window);
}

MV_API void MV_CALL mv_uninit(mv_handle window) {
    log_line("uninit %llu", (unsigned long long)window);
}

MV_API int MV_CALL mv_capture_info(mv_handle window, int* width, int* height, int* channels) {
    (void)window;
    FILE* file = open_capture(width, height);
    if (!file) {
        return 0;
    }
    fclose(file);
    *channels = 3;
    return 1;
}

MV_API void MV_CALL mv_capture(mv_handle window, unsigned char* buffer, int size) {
    (void)window;
    int width = 0;
    int height = 0;
    FILE* file = open_capture(&width, &height);
    if (!file) {
        return;
    }
    /* The file may have changed since mv_capture_info: never write past `size`. */
    const long wanted = (long)width * height * 3;
    if (wanted == size && fread(buffer, 1, (size_t)size, file) != (size_t)size) {
        memset(buffer, 0, (size_t)size);
    }
    fclose(file);
}

MV_API void MV_CALL mv_mouse_move(mv_handle window, int x, int y) {
    log_line("move %llu %d %d", (unsigned long long)window, x, y);
}

MV_API void MV_CALL mv_mouse_down(mv_handle window, int button, int x, int y) {
    log_line("down %llu %d %d %d", (unsigned long long)window, button, x, y);
}

MV_API void MV_CALL mv_mouse_up(mv_handle window, int button) {
    log_line("up %llu %d", (unsigned long long)window, button);
}

MV_API void MV_CALL mv_mouse_wheel(mv_handle window, int delta, int x, int y) {
    log_line("wheel %llu %d %d %d", (unsigned long long)window, delta, x, y);
}

MV_API void MV_CALL mv_key_down(mv_handle window, int key) {
    log_line("key_down %llu %d", (unsigned long long)window, key);
}

MV_API void MV_CALL mv_key_up(mv_handle window, int key) {
    log_line("key_up %llu %d", (unsigned long long)window, key);
}

/* Writes the UTF-16 text as UTF-8. */
MV_API void MV_CALL mv_input_text(mv_handle window, const mv_char16* text) {
    size_t length = 0;
    while (text[length]) {
        ++length;
    }
    char* utf8 = (char*)malloc(length * 3 + 1);
    if (!utf8) {
        return;
    }
    size_t out = 0;
    for (size_t i = 0; i < length; ++i) {
        unsigned long code = text[i];
        if (code >= 0xD800 && code <= 0xDBFF && i + 1 < length && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00u);
        }
        if (code < 0x80) {
            utf8[out++] = (char)code;
        } else if (code < 0x800) {
            utf8[out++] = (char)(0xC0 | (code >> 6));
            utf8[out++] = (char)(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            utf8[out++] = (char)(0xE0 | (code >> 12));
            utf8[out++] = (char)(0x80 | ((code >> 6) & 0x3F));
            utf8[out++] = (char)(0x80 | (code & 0x3F));
        } else {
            utf8[out++] = (char)(0xF0 | (code >> 18));
            utf8[out++] = (char)(0x80 | ((code >> 12) & 0x3F));
            utf8[out++] = (char)(0x80 | ((code >> 6) & 0x3F));
            utf8[out++] = (char)(0x80 | (code & 0x3F));
        }
    }
    utf8[out] = '\0';
    log_line("text %llu %s", (unsigned long long)window, utf8);
    free(utf8);
}

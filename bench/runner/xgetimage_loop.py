#!/usr/bin/env python3
"""The reference loop: XGetImage of the whole root window through ctypes, as a Python
screen-automation loop grabs frames. Prints frames per second over SECONDS."""
import ctypes
import ctypes.util
import sys
import time


class XImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p),
                ("byte_order", ctypes.c_int), ("bitmap_unit", ctypes.c_int),
                ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int),
                ("depth", ctypes.c_int), ("bytes_per_line", ctypes.c_int),
                ("bits_per_pixel", ctypes.c_int), ("red_mask", ctypes.c_ulong),
                ("green_mask", ctypes.c_ulong), ("blue_mask", ctypes.c_ulong),
                ("obdata", ctypes.c_void_p), ("create_image", ctypes.c_void_p),
                ("destroy_image", ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p))]


def main():
    seconds = float(sys.argv[1]) if len(sys.argv) > 1 else 3.0
    x11 = ctypes.cdll.LoadLibrary(ctypes.util.find_library("X11"))
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
    x11.XGetImage.restype = ctypes.POINTER(XImage)
    x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int,
                              ctypes.c_uint, ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
    x11.XDisplayWidth.argtypes = [ctypes.c_void_p, ctypes.c_int]
    x11.XDisplayHeight.argtypes = [ctypes.c_void_p, ctypes.c_int]
    display = x11.XOpenDisplay(None)
    root = x11.XDefaultRootWindow(display)
    width, height = x11.XDisplayWidth(display, 0), x11.XDisplayHeight(display, 0)
    all_planes, z_pixmap = 0xFFFFFFFF, 2
    frames = 0
    start = time.perf_counter()
    while time.perf_counter() - start < seconds:
        image = x11.XGetImage(display, root, 0, 0, width, height, all_planes, z_pixmap)
        image.contents.destroy_image(ctypes.cast(image, ctypes.c_void_p))
        frames += 1
    print(f"{frames / (time.perf_counter() - start):.1f}")


main()

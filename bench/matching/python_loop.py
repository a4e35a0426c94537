#!/usr/bin/python3
"""The matches of one matching_bench cycle made by a Python + OpenCV loop, one after
another: 20 templates of 24x24 to 160x90 on 1280x720 and 1920x1080 frames, over the
whole frame and in rectangles twice the template's size (one pixel wider and taller).
Prints "ROWS,RECTS,MS" lines, the median milliseconds of a cycle."""
import statistics
import sys
import time

import cv2
import numpy as np

TEMPLATES = 20


def noise(width, height, seed):
    image = np.random.default_rng(seed).integers(0, 256, (height, width, 3), dtype=np.uint8)
    return cv2.GaussianBlur(image, (5, 5), 0)


def cycle_ms(frame, templates, regions):
    start = time.perf_counter()
    for template, (x, y, w, h) in zip(templates, regions):
        scores = cv2.matchTemplate(frame[y:y + h, x:x + w], template, cv2.TM_CCOEFF_NORMED)
        cv2.minMaxLoc(scores)
    return (time.perf_counter() - start) * 1000


def main():
    seconds = float(sys.argv[1]) if len(sys.argv) > 1 else 2.0
    rng = np.random.default_rng(3)
    for width, height in ((1280, 720), (1920, 1080)):
        frame = noise(width, height, 1)
        for rects in (0, 1):
            templates, regions = [], []
            for i in range(TEMPLATES):
                w = 24 + (160 - 24) * i // (TEMPLATES - 1)
                h = 24 + (90 - 24) * i // (TEMPLATES - 1)
                x = int(rng.integers(w, width - 2 * w))
                y = int(rng.integers(h, height - 2 * h))
                templates.append(frame[y:y + h, x:x + w].copy())
                regions.append((x - w // 2, y - h // 2, 2 * w + 1, 2 * h + 1) if rects
                               else (0, 0, width, height))
            times = []
            deadline = time.perf_counter() + seconds
            while time.perf_counter() < deadline or len(times) < 3:
                times.append(cycle_ms(frame, templates, regions))
            print(f"{height},{rects},{statistics.median(times):.3f}")


if __name__ == "__main__":
    main()

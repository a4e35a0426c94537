"""model_rewrite_test.py MODELS_DIR: the rewritten graphs, run by OpenCV DNN, give what
the original graphs give (evaluated in numpy) on rendered text at several input sizes,
one network per graph reused across the sizes as the service does. Exit 77 (skipped)
when scripts/fetch-ocr-models has not run."""

import os
import sys
import unittest

import cv2
import numpy as np
import onnx

import numpy_graph

MODELS = sys.argv[1] if len(sys.argv) > 1 else ""
ORIGINAL = os.path.join(MODELS, "original")
TOLERANCE = 1e-3


def text_image(height, width, seed):
    """Dark text on a light gradient, the detector's and recogniser's usual input."""
    rng = np.random.default_rng(seed)
    image = np.tile(np.linspace(150, 250, width, dtype=np.float32), (height, 1))
    image = cv2.merge([image, image * 0.9, image * 0.8]).astype(np.uint8)
    scale = height / 40.0
    cv2.putText(image, "Level %d OK" % rng.integers(10, 99), (2, int(height * 0.75)),
                cv2.FONT_HERSHEY_SIMPLEX, scale, (20, 20, 20), max(1, int(scale * 2)))
    return image


def blob(image, mean, std):
    x = (image.astype(np.float32) / 255.0 - mean) / std
    return np.ascontiguousarray(x.transpose(2, 0, 1)[None])


class Rewrite(unittest.TestCase):
    def compare(self, name, inputs):
        original = onnx.load(os.path.join(ORIGINAL, name + "_infer.onnx"))
        net = cv2.dnn.readNetFromONNX(os.path.join(MODELS, name + ".onnx"))
        output = original.graph.output[0].name
        for x in inputs:
            with self.subTest(shape=x.shape):
                want, = numpy_graph.run(original, {original.graph.input[0].name: x}, [output])
                net.setInput(x)
                got = net.forward().reshape(want.shape)
                self.assertLess(float(np.abs(got - want).max()), TOLERANCE)
                yield want, got

    def test_detector_at_several_sizes_and_back(self):
        mean, std = np.array([0.485, 0.456, 0.406]), np.array([0.229, 0.224, 0.225])
        # Back to the first size: a graph refolded on resize would differ there.
        sizes = [(64, 256), (96, 320), (32, 96), (64, 256)]
        inputs = [blob(text_image(h, w, i), mean, std).astype(np.float32)
                  for i, (h, w) in enumerate(sizes)]
        for want, _ in self.compare("ch_PP-OCRv4_det", inputs):
            self.assertGreater(float(want.max()), 0.5, "no text found in the test image")

    def test_recogniser_at_several_widths(self):
        inputs = [blob(text_image(48, w, i), 0.5, 0.5).astype(np.float32)
                  for i, w in enumerate([96, 160, 320, 400, 96])]
        for want, got in self.compare("ch_PP-OCRv4_rec", inputs):
            self.assertTrue(np.array_equal(want.argmax(-1), got.argmax(-1)))


if __name__ == "__main__":
    if not os.path.isdir(ORIGINAL):
        print("model_rewrite_test: no models in %r; run scripts/fetch-ocr-models" % MODELS)
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])

#pragma once

#include <opencv2/core/mat.hpp>

#include <vector>

#include "AccurateModels.h"
#include "LineReader.h"
#include "OcrAnswer.h"
#include "TextDetector.h"

namespace autoscene::ocr {

// The lines the detector found: where they are, and their pixels turned upright.
struct FoundLines {
    std::vector<cv::Rect> bounds;
    std::vector<cv::Mat> crops;
};

// The accurate engine: the detector finds the lines, the recogniser reads each one.
// One network pair per instance; not thread-safe.
class AccurateRecogniser {
public:
    // Throws what TextDetector and LineReader throw; `models` must outlive this.
    explicit AccurateRecogniser(const AccurateModels& models);

    // The text lines of an 8-bit BGR image in reading order, blank lines left out.
    std::vector<TextLine> recognise(const cv::Mat& bgr) { return read(find(bgr)); }

    // recognise() in two steps, so that a caller who learns there are several lines can
    // lend an idle `partner` (same models, used by no one else meanwhile): the two then
    // read the lines on two threads, each taking the widest line left.
    FoundLines find(const cv::Mat& bgr);
    std::vector<TextLine> read(const FoundLines& found, AccurateRecogniser* partner = nullptr);

private:
    TextDetector detector_;
    LineReader reader_;
};

// The pixels under `box`, turned upright (a crop 1.5 times taller than wide is taken
// for vertical text and turned a quarter left).
cv::Mat uprightCrop(const cv::Mat& bgr, const cv::RotatedRect& box);

// Top to bottom; lines whose tops lie within 10 pixels read left to right.
void sortInReadingOrder(std::vector<TextLine>& lines);

}  // namespace autoscene::ocr

#pragma once
// Reads the text in one rectangle of a frame through the recognition service, the
// region prepared as its item asks. Within one cycle each thread recognises a
// rectangle once; later reads in the cycle get the same result.

#include <QRect>
#include <cstdint>
#include <memory>
#include <opencv2/core/mat.hpp>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

#include "recognition/TemplateMatcher.h"
#include "system/PerThread.h"
#include "text/OcrClient.h"

namespace autoscene::text {

// A text region's `image_type`, `threshold`, `filter_color` and `filter_sim`.
struct TextPreparation {
    recognition::MatchImageType imageType = recognition::MatchImageType::Color;
    int thresholdValue = 128;
    std::int64_t filterColor = 0;  // 0xRRGGBB
    float filterSimilarity = 0.9f;
};

// The region as sent: colour as it is, grey above the threshold turned white, or the
// filter colour drawn black on white. Other types are sent as they are.
cv::Mat prepareTextRegion(const cv::Mat& bgrRegion, const TextPreparation& preparation);

// The engine that reads a region so prepared: the networks read colour and a colour
// filtered to black on white best; a thresholded region, chosen for speed, goes to
// Tesseract.
OcrEngine ocrEngineFor(recognition::MatchImageType imageType);

class TextRegionReader {
public:
    TextRegionReader(std::shared_ptr<const OcrClient> client, TextPreparation preparation);

    // The text in `rect` (nothing: the whole frame), clipped to the frame, with its boxes
    // in frame pixels. Empty for an empty frame or a rectangle outside it, and when `stop`
    // ends the request (not kept for the cycle then).
    RecognisedText read(const cv::Mat& frame, const std::optional<QRect>& rect,
                        std::int64_t cycleId, const std::stop_token& stop = {});
    void clearThreadState() { cache_.clear(); }

private:
    struct CycleCache {
        std::int64_t cycleId = -1;
        std::vector<std::pair<QRect, RecognisedText>> entries;
    };

    const std::shared_ptr<const OcrClient> client_;
    const TextPreparation preparation_;
    sys::PerThread<CycleCache> cache_;
};

}  // namespace autoscene::text

#include "text/TextRegionReader.h"

#include <opencv2/imgproc.hpp>

#include "recognition/ColorSearch.h"

namespace autoscene::text {

cv::Mat prepareTextRegion(const cv::Mat& bgrRegion, const TextPreparation& preparation) {
    cv::Mat prepared;
    switch (preparation.imageType) {
        case recognition::MatchImageType::Threshold:
            cv::cvtColor(bgrRegion, prepared, cv::COLOR_BGR2GRAY);
            cv::threshold(prepared, prepared, preparation.thresholdValue, 255, cv::THRESH_BINARY);
            break;
        case recognition::MatchImageType::FilterColor:
            // The recogniser reads dark text on a light ground best.
            recognition::filterColor(bgrRegion, preparation.filterColor,
                                     preparation.filterSimilarity, prepared);
            cv::bitwise_not(prepared, prepared);
            break;
        default:
            prepared = bgrRegion;
            break;
    }
    return prepared;
}

OcrEngine ocrEngineFor(recognition::MatchImageType imageType) {
    return imageType == recognition::MatchImageType::Threshold ? OcrEngine::Fast
                                                               : OcrEngine::Accurate;
}

TextRegionReader::TextRegionReader(std::shared_ptr<const OcrClient> client,
                                   TextPreparation preparation)
    : client_(std::move(client)), preparation_(preparation) {}

RecognisedText TextRegionReader::read(const cv::Mat& frame, const std::optional<QRect>& rect,
                                      std::int64_t cycleId, const std::stop_token& stop) {
    const QRect whole(0, 0, frame.cols, frame.rows);
    const QRect area = rect ? rect->intersected(whole) : whole;
    if (frame.empty() || area.isEmpty()) {
        return {};
    }
    CycleCache& cache = cache_.get();
    if (cache.cycleId != cycleId) {
        cache.cycleId = cycleId;
        cache.entries.clear();
    }
    for (const auto& [cachedRect, text] : cache.entries) {
        if (cachedRect == area) {
            return text;
        }
    }
    const cv::Mat region = frame(cv::Rect(area.x(), area.y(), area.width(), area.height()));
    RecognisedText text = client_->recognise(prepareTextRegion(region, preparation_),
                                             ocrEngineFor(preparation_.imageType), stop);
    if (stop.stop_requested()) {
        return {};
    }
    for (TextBox& box : text.boxes) {
        box.rect.translate(area.topLeft());
    }
    cache.entries.emplace_back(area, text);
    return text;
}

}  // namespace autoscene::text

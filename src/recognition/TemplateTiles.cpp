#include "recognition/TemplateTiles.h"

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace autoscene::recognition {

namespace {

// OpenCV's choice of tile (imgproc's crossCorr): about 4.5 template sizes, at least
// 256 pixels with the template, no more than the score map; then widened to fill an
// efficient DFT size.
constexpr double kTileScale = 4.5;
constexpr int kMinTileWithTemplate = 256;

struct Span {
    int begin = 0;
    int end = 0;  // exclusive
};

// The tiles along one axis, of a score map `scoreLength` long, that cover [first, last].
// The sub-search starts on a tile boundary and is at least as long as the first tile
// size OpenCV tries, so it picks the same DFT size and tile grid as the whole search.
Span tilesCovering(int first, int last, int templLength, int scoreLength) {
    const int tried = std::min(
        std::max(cvRound(templLength * kTileScale), kMinTileWithTemplate - templLength + 1),
        scoreLength);
    if (tried == scoreLength) {
        return {0, scoreLength};
    }
    const int dft = cv::getOptimalDFTSize(tried + templLength - 1);
    const int tile = std::min(dft - templLength + 1, scoreLength);
    Span span{first / tile * tile, std::min((last / tile + 1) * tile, scoreLength)};
    if (span.end - span.begin < tried) {
        // Only the shorter last tile; its predecessor makes the sub-search long enough.
        span.begin -= tile;
    }
    return span;
}

}  // namespace

cv::Point scoreTiles(const cv::Mat& region, const cv::Mat& templ, const cv::Rect& wanted,
                     cv::Mat& scores) {
    const Span x = tilesCovering(wanted.x, wanted.x + wanted.width - 1, templ.cols,
                                 region.cols - templ.cols + 1);
    const Span y = tilesCovering(wanted.y, wanted.y + wanted.height - 1, templ.rows,
                                 region.rows - templ.rows + 1);
    const cv::Rect pixels(x.begin, y.begin, x.end - x.begin + templ.cols - 1,
                          y.end - y.begin + templ.rows - 1);
    cv::matchTemplate(region(pixels), templ, scores, cv::TM_CCOEFF_NORMED);
    return pixels.tl();
}

}  // namespace autoscene::recognition

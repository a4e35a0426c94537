#pragma once
// Where a template correlates best with a region: the maximum of OpenCV's normalised
// correlation coefficient and its first position in row order. The exhaustive search
// scores every position. The coarse-to-fine search scores reduced copies first and, at
// full size, only the neighbourhoods of the best reduced positions. A score that may round
// either way is scored again on the exhaustive search's own tiles; where it cannot vouch
// for that search's position and two-decimal score it runs that search.

#include <opencv2/core/mat.hpp>
#include <vector>

#include "recognition/ReducedFrames.h"

namespace autoscene::recognition {

enum class SearchRoute { Exhaustive, CoarseToFine };

struct BestMatch {
    cv::Point at;        // top-left corner in the region
    double score = 0.0;  // unrounded
    SearchRoute route = SearchRoute::Exhaustive;
};

// Buffers one thread keeps between searches.
struct SearchScratch {
    cv::Mat scores;
    cv::Mat coarseRegion;
    cv::Mat coarseTemplate;
    cv::Mat coarseScores;
    cv::Mat peaks;
};

// Both take 8-bit images of one channel count, the template no larger than the region.
BestMatch searchExhaustive(const cv::Mat& region, const cv::Mat& templ, SearchScratch& scratch);
// With a cycle, the reduced region is shared with the cycle's other searches of it.
BestMatch searchCoarseToFine(const cv::Mat& region, const cv::Mat& templ, SearchScratch& scratch,
                             const SearchCycle* cycle = nullptr);

// Every position scoring at least `floor` that no better one within half a template
// overlaps, best first, at most `limit`. The best is searchCoarseToFine's; where that took
// every position's score the list is exact, otherwise the reduced scores point at the
// others, so one whose reduced score falls far below its own may be missed. With a cycle,
// the reduced region is shared as in searchCoarseToFine.
std::vector<BestMatch> searchAll(const cv::Mat& region, const cv::Mat& templ, double floor,
                                 size_t limit, SearchScratch& scratch,
                                 const SearchCycle* cycle = nullptr);
// The positions searchAll would list at or above `floor`, where only reduced positions
// scoring within the margin of `near` are followed up at full size: unlike searchAll it
// looks for no best below that, so a region where nothing comes near costs one reduced
// search. Exhaustive where no reduced copy keeps enough of the template or the reduced
// peaks are too many to follow up.
std::vector<BestMatch> searchNear(const cv::Mat& region, const cv::Mat& templ, double floor,
                                  double near, size_t limit, SearchScratch& scratch,
                                  const SearchCycle* cycle = nullptr);
// The rest of searchAll after its search: `best` is what searchCoarseToFine of the same
// region and template last returned with this scratch, whose scores it left there.
std::vector<BestMatch> listAround(const cv::Mat& region, const cv::Mat& templ,
                                  const BestMatch& best, double floor, size_t limit,
                                  SearchScratch& scratch);

}  // namespace autoscene::recognition

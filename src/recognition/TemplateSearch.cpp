#include "recognition/TemplateSearch.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include <opencv2/imgproc.hpp>

#include "recognition/TemplateTiles.h"

namespace autoscene::recognition {

namespace {

// A reduced template keeps at least this many inner cells a side; reducing by more than
// the largest factor loses the shapes that tell controls apart.
constexpr int kMinReducedSide = 6;
constexpr int kMaxFactor = 4;

// Below this many template areas in the region, one full search costs about what the
// reduced search and the follow-ups cost.
constexpr double kMinAreaRatio = 8.0;
// The reduced template must keep this share of the template's contrast, and this much
// contrast at all (grey levels), for its scores to point at the right places.
constexpr double kMinContrastKept = 0.3;
constexpr double kMinReducedContrast = 2.0;
// Reduced positions within this much of the best reduced score are followed up at full
// size; more of them than kMaxCandidates means a repetitive or featureless screen.
constexpr float kCandidateMargin = 0.2f;
constexpr size_t kMaxCandidates = 64;
// A best match weaker than this is one of many weak, alike peaks that the reduced
// scores do not tell apart (inverted or look-alike pieces on real screens); the full
// search decides among them.
constexpr double kMinConfirmedScore = 0.45;
// OpenCV correlates in single precision over blocks that depend on the region's size,
// so a score computed over part of the region differs from the full search's in the
// last digits. The difference grows with how far the pixel values sit from zero
// compared with their spread; measured at below 3e-7 times that ratio, kept with a
// wide margin. Near ties and rounding boundaries within it are settled by rescoring the
// whole search's tiles.
constexpr double kScoreNoisePerRatio = 4e-6;

struct Stats {
    double power = 0.0;   // mean square over channels
    double spread = 0.0;  // variance over channels
};

Stats stats(const cv::Mat& image) {
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(image, mean, deviation);
    Stats s;
    for (int c = 0; c < image.channels(); ++c) {
        s.power += mean[c] * mean[c] + deviation[c] * deviation[c];
        s.spread += deviation[c] * deviation[c];
    }
    s.power /= image.channels();
    s.spread /= image.channels();
    return s;
}

BestMatch bestOf(const cv::Mat& scores, SearchRoute route) {
    double best = 0.0;
    cv::Point at;
    cv::minMaxLoc(scores, nullptr, &best, nullptr, &at);
    return {at, best, route};
}

// Averages over cells of `factor` pixels, then blurs across neighbouring cells: a match
// whose offset is no multiple of the factor straddles cells, and the blur keeps its
// reduced score close to that of an aligned one.
void reduce(const cv::Mat& image, cv::Size factor, cv::Mat& reduced) {
    const cv::Size size(image.cols / factor.width, image.rows / factor.height);
    cv::resize(image(cv::Rect(0, 0, size.width * factor.width, size.height * factor.height)),
               reduced, size, 0, 0, cv::INTER_AREA);
    cv::GaussianBlur(reduced, reduced, cv::Size(3, 3), 0);
}

// The region reduced by `factor`: the cycle's shared copy, else one made in the scratch.
cv::Mat reducedRegion(const cv::Mat& region, cv::Size factor, SearchScratch& scratch,
                      const SearchCycle* cycle) {
    if (cycle) {
        // Shared, so only read: scratch.coarseRegion is reduced into in place.
        return ReducedFrames::shared().get(
            *cycle, region, factor,
            [&](const cv::Mat& pixels, cv::Mat& reduced) { reduce(pixels, factor, reduced); });
    }
    reduce(region, factor, scratch.coarseRegion);
    return scratch.coarseRegion;
}

// The reduced template leaves out its outer ring of cells: the blur mixes a template's
// edge cells with what surrounds it, which on the screen is other pixels than the
// template's own mirrored edge. A template of thin outlines, a keypad button, is mostly
// edge cells.
const cv::Point kInnerCells(1, 1);

cv::Mat innerCells(const cv::Mat& reduced) {
    return reduced(
        cv::Rect(kInnerCells, reduced.size() - cv::Size(2 * kInnerCells.x, 2 * kInnerCells.y)));
}

// The reduction factors for the template, or nothing when no reduced copy keeps enough
// of it; the reduced template's inner cells are left in `reduced`.
std::optional<cv::Size> reductionFor(const cv::Mat& templ, cv::Mat& reduced) {
    const double contrast = std::sqrt(stats(templ).spread);
    int fx = std::clamp(templ.cols / (kMinReducedSide + 2 * kInnerCells.x), 1, kMaxFactor);
    int fy = std::clamp(templ.rows / (kMinReducedSide + 2 * kInnerCells.y), 1, kMaxFactor);
    cv::Mat whole;
    while (fx * fy >= 4) {
        reduce(templ, cv::Size(fx, fy), whole);
        innerCells(whole).copyTo(reduced);
        const double kept = std::sqrt(stats(reduced).spread);
        if (kept >= kMinReducedContrast && kept >= kMinContrastKept * contrast) {
            return cv::Size(fx, fy);
        }
        fx = std::max(fx / 2, 1);
        fy = std::max(fy / 2, 1);
    }
    return std::nullopt;
}

// Grey: a search of places near a score only has to keep those that reach it above the
// follow-up score, and grey thirds the cost; the full-size scores are taken in colour.
// A template's inner cells in grey, as searchNear correlates them.
void reduceGrey(const cv::Mat& image, cv::Size factor, cv::Mat& reduced) {
    cv::Mat whole;
    reduce(image, factor, whole);
    if (whole.channels() == 3) {
        cv::cvtColor(whole, whole, cv::COLOR_BGR2GRAY);
    }
    innerCells(whole).copyTo(reduced);
}

// For a search of places near a score: the reduction as reductionFor chooses it, in grey,
// and the reduced score below which no place can reach the score at full size: how far a
// perfect match half a cell off drops, and the usual margin.
struct NearReduction {
    cv::Size factor;
    double followUp = 0.0;
};

std::optional<NearReduction> nearReductionFor(const cv::Mat& templ, double near, cv::Mat& reduced) {
    const std::optional<cv::Size> factor = reductionFor(templ, reduced);
    if (!factor) {
        return std::nullopt;
    }
    reduceGrey(templ, *factor, reduced);
    const cv::Point half(factor->width / 2, factor->height / 2);
    cv::Mat shifted;
    reduceGrey(templ(cv::Rect(half, templ.size() - cv::Size(half.x, half.y))), *factor, shifted);
    const cv::Rect common(0, 0, std::min(reduced.cols, shifted.cols),
                          std::min(reduced.rows, shifted.rows));
    cv::Mat score;
    cv::matchTemplate(reduced(common), shifted(common), score, cv::TM_CCOEFF_NORMED);
    return NearReduction{*factor, near - kCandidateMargin - (1.0 - double(score.at<float>(0, 0)))};
}

struct Peak {
    float score = 0.0f;
    cv::Point at;
};

// Local maxima of `scores` at or above `floor`, best first.
std::vector<Peak> peaksAbove(const cv::Mat& scores, float floor, cv::Mat& peaks) {
    cv::dilate(scores, peaks, cv::Mat());
    std::vector<Peak> found;
    for (int y = 0; y < scores.rows; ++y) {
        const float* row = scores.ptr<float>(y);
        const float* peakRow = peaks.ptr<float>(y);
        for (int x = 0; x < scores.cols; ++x) {
            if (row[x] >= floor && row[x] == peakRow[x]) {
                found.push_back({row[x], {x, y}});
            }
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Peak& a, const Peak& b) { return a.score > b.score; });
    return found;
}

// Local maxima of the reduced scores within kCandidateMargin of the best, best first;
// nothing when there are too many to follow up.
std::optional<std::vector<Peak>> candidates(const cv::Mat& scores, cv::Mat& peaks) {
    double best = 0.0;
    cv::minMaxLoc(scores, nullptr, &best);
    std::vector<Peak> found = peaksAbove(scores, float(best) - kCandidateMargin, peaks);
    if (found.size() > kMaxCandidates) {
        return std::nullopt;
    }
    return found;
}

bool apart(cv::Point a, cv::Point b) {
    return std::abs(a.x - b.x) > 1 || std::abs(a.y - b.y) > 1;
}

// Whether `a` is the one minMaxLoc would report of the two.
bool before(const BestMatch& a, const BestMatch& b) {
    return a.score > b.score ||
           (a.score == b.score && (a.at.y < b.at.y || (a.at.y == b.at.y && a.at.x < b.at.x)));
}

// The full-size positions around one reduced peak and the best of them.
struct Neighbourhood {
    cv::Rect positions;
    BestMatch best;
};

// Full-size scores around each candidate: the best of all, and the best position more
// than a pixel away from it.
struct Confirmed {
    BestMatch best;
    double runnerUp = -2.0;
    std::vector<Neighbourhood> neighbourhoods;
};

Confirmed confirm(const cv::Mat& region, const cv::Mat& templ, const std::vector<Peak>& peaks,
                  cv::Size factor, cv::Mat& scores) {
    const int lastX = region.cols - templ.cols;
    const int lastY = region.rows - templ.rows;
    Confirmed confirmed;
    std::vector<BestMatch> tops;
    for (const Peak& peak : peaks) {
        // A reduced position covers `factor` full positions; one reduced step either
        // side allows for the shapes the reduction blurred across its cells.
        const cv::Point cell = peak.at - kInnerCells;
        const cv::Point first(std::clamp((cell.x - 1) * factor.width, 0, lastX),
                              std::clamp((cell.y - 1) * factor.height, 0, lastY));
        const cv::Point last(std::clamp((cell.x + 2) * factor.width - 1, 0, lastX),
                             std::clamp((cell.y + 2) * factor.height - 1, 0, lastY));
        const cv::Rect positions(first, last + cv::Point(1, 1));
        cv::matchTemplate(region(cv::Rect(first, positions.size() + templ.size() - cv::Size(1, 1))),
                          templ, scores, cv::TM_CCOEFF_NORMED);
        BestMatch local = bestOf(scores, SearchRoute::CoarseToFine);
        // The next best in this neighbourhood, away from its best.
        const cv::Rect around = cv::Rect(local.at - cv::Point(1, 1), cv::Size(3, 3)) &
                                cv::Rect(0, 0, scores.cols, scores.rows);
        scores(around).setTo(-2.0f);
        BestMatch next = bestOf(scores, SearchRoute::CoarseToFine);
        local.at += first;
        next.at += first;
        tops.push_back(local);
        if (next.score > -2.0) {
            tops.push_back(next);
        }
        confirmed.neighbourhoods.push_back({positions, local});
    }
    confirmed.best = *std::min_element(tops.begin(), tops.end(), before);
    for (const BestMatch& other : tops) {
        if (apart(other.at, confirmed.best.at)) {
            confirmed.runnerUp = std::max(confirmed.runnerUp, other.score);
        }
    }
    return confirmed;
}

// The best of the neighbourhoods scoring within `margin` of the best, with the whole
// search's own arithmetic: its scores to the last digit, so its choice among near-equal
// positions and its rounding.
BestMatch exactBest(const cv::Mat& region, const cv::Mat& templ, const Confirmed& confirmed,
                    double margin, cv::Mat& scores) {
    BestMatch best{{}, -2.0, SearchRoute::CoarseToFine};
    for (const Neighbourhood& n : confirmed.neighbourhoods) {
        if (n.best.score < confirmed.best.score - margin) {
            continue;
        }
        const cv::Point origin = scoreTiles(region, templ, n.positions, scores);
        BestMatch local = bestOf(scores(n.positions - origin), SearchRoute::CoarseToFine);
        local.at += n.positions.tl();
        if (before(local, best)) {
            best = local;
        }
    }
    return best;
}

// How far the full search's score at the match may lie from the one computed here.
std::optional<double> scoreNoise(const cv::Mat& region, const cv::Mat& templ, cv::Point at) {
    const Stats window = stats(region(cv::Rect(at, templ.size())));
    const Stats pattern = stats(templ);
    if (window.spread <= 0.0 || pattern.spread <= 0.0) {
        return std::nullopt;
    }
    return kScoreNoisePerRatio *
           std::sqrt(window.power / window.spread * pattern.power / pattern.spread);
}

// Whether the noise could carry the score across a two-decimal rounding boundary.
bool nearRoundingBoundary(double score, double noise) {
    const double hundredths = score * 100.0;
    return std::abs(hundredths - std::floor(hundredths) - 0.5) <= noise * 100.0;
}

// Keeps the best of the matches that overlap by more than half a template either way.
std::vector<BestMatch> separate(std::vector<BestMatch> matches, cv::Size templ, size_t limit) {
    std::sort(matches.begin(), matches.end(), before);
    std::vector<BestMatch> kept;
    for (const BestMatch& match : matches) {
        const bool near = std::any_of(kept.begin(), kept.end(), [&](const BestMatch& k) {
            return std::abs(k.at.x - match.at.x) * 2 < templ.width &&
                   std::abs(k.at.y - match.at.y) * 2 < templ.height;
        });
        if (!near) {
            kept.push_back(match);
            if (kept.size() == limit) {
                break;
            }
        }
    }
    return kept;
}

}  // namespace

namespace {

std::vector<BestMatch> peaksOfScores(SearchScratch& scratch, cv::Size templ, double floor,
                                     size_t limit) {
    std::vector<BestMatch> found;
    for (const Peak& peak : peaksAbove(scratch.scores, float(floor), scratch.peaks)) {
        found.push_back({peak.at, peak.score, SearchRoute::Exhaustive});
    }
    return separate(std::move(found), templ, limit);
}

}  // namespace

std::vector<BestMatch> searchAll(const cv::Mat& region, const cv::Mat& templ, double floor,
                                 size_t limit, SearchScratch& scratch, const SearchCycle* cycle) {
    return listAround(region, templ, searchCoarseToFine(region, templ, scratch, cycle), floor,
                      limit, scratch);
}

std::vector<BestMatch> searchNear(const cv::Mat& region, const cv::Mat& templ, double floor,
                                  double near, size_t limit, SearchScratch& scratch,
                                  const SearchCycle* cycle) {
    const std::optional<NearReduction> reduction =
        double(region.total()) < kMinAreaRatio * double(templ.total())
            ? std::nullopt
            : nearReductionFor(templ, near, scratch.coarseTemplate);
    if (reduction) {
        const cv::Size factor = reduction->factor;
        cv::Mat reduced = reducedRegion(region, factor, scratch, cycle);
        if (reduced.channels() == 3) {
            cv::cvtColor(reduced, scratch.coarseRegion, cv::COLOR_BGR2GRAY);
            reduced = scratch.coarseRegion;
        }
        cv::matchTemplate(reduced, scratch.coarseTemplate, scratch.coarseScores,
                          cv::TM_CCOEFF_NORMED);
        const std::vector<Peak> peaks =
            peaksAbove(scratch.coarseScores, float(reduction->followUp), scratch.peaks);
        if (peaks.empty()) {
            return {};
        }
        if (peaks.size() <= std::max(limit * 4, kMaxCandidates)) {
            std::vector<BestMatch> found;
            for (const Neighbourhood& n :
                 confirm(region, templ, peaks, factor, scratch.scores).neighbourhoods) {
                if (n.best.score >= floor) {
                    found.push_back(n.best);
                }
            }
            return separate(std::move(found), templ.size(), limit);
        }
    }
    searchExhaustive(region, templ, scratch);
    return peaksOfScores(scratch, templ.size(), floor, limit);
}

std::vector<BestMatch> listAround(const cv::Mat& region, const cv::Mat& templ,
                                  const BestMatch& best, double floor, size_t limit,
                                  SearchScratch& scratch) {
    // Below the floor there is nothing to list; the best's scores show where the others are.
    if (best.score < floor) {
        return {};
    }
    if (best.route == SearchRoute::Exhaustive) {
        return peaksOfScores(scratch, templ.size(), floor, limit);
    }
    // The coarse route left the reduced scores and the reduced template in the scratch.
    const std::optional<cv::Size> factor = reductionFor(templ, scratch.coarseTemplate);
    std::vector<Peak> peaks =
        peaksAbove(scratch.coarseScores, float(floor) - kCandidateMargin, scratch.peaks);
    // Follow-ups cost a full-size neighbourhood each; a repetitive screen has many.
    peaks.resize(std::min(peaks.size(), std::max(limit * 4, kMaxCandidates)));
    std::vector<BestMatch> found{best};
    if (factor && !peaks.empty()) {
        for (const Neighbourhood& n :
             confirm(region, templ, peaks, *factor, scratch.scores).neighbourhoods) {
            if (n.best.score >= floor) {
                found.push_back(n.best);
            }
        }
    }
    return separate(std::move(found), templ.size(), limit);
}

BestMatch searchExhaustive(const cv::Mat& region, const cv::Mat& templ, SearchScratch& scratch) {
    cv::matchTemplate(region, templ, scratch.scores, cv::TM_CCOEFF_NORMED);
    return bestOf(scratch.scores, SearchRoute::Exhaustive);
}

BestMatch searchCoarseToFine(const cv::Mat& region, const cv::Mat& templ, SearchScratch& scratch,
                             const SearchCycle* cycle) {
    if (double(region.total()) < kMinAreaRatio * double(templ.total())) {
        return searchExhaustive(region, templ, scratch);
    }
    const std::optional<cv::Size> factor = reductionFor(templ, scratch.coarseTemplate);
    if (!factor) {
        return searchExhaustive(region, templ, scratch);
    }
    cv::matchTemplate(reducedRegion(region, *factor, scratch, cycle), scratch.coarseTemplate,
                      scratch.coarseScores, cv::TM_CCOEFF_NORMED);
    const std::optional<std::vector<Peak>> peaks = candidates(scratch.coarseScores, scratch.peaks);
    if (!peaks) {
        return searchExhaustive(region, templ, scratch);
    }
    const Confirmed confirmed = confirm(region, templ, *peaks, *factor, scratch.scores);
    const std::optional<double> noise = scoreNoise(region, templ, confirmed.best.at);
    // A rival within the noise could be the full search's first maximum instead, and
    // one of a row of such rivals may lie between the neighbourhoods. A best that scores
    // far below what its reduced copy promised means the reduced copies do not tell the
    // places apart (a keypad of alike buttons): the right one may not have been followed.
    if (!noise || confirmed.best.score < kMinConfirmedScore ||
        confirmed.best.score < peaks->front().score - kCandidateMargin ||
        confirmed.runnerUp >= confirmed.best.score - 2.0 * *noise) {
        return searchExhaustive(region, templ, scratch);
    }
    if (nearRoundingBoundary(confirmed.best.score, *noise)) {
        return exactBest(region, templ, confirmed, 2.0 * *noise, scratch.scores);
    }
    return confirmed.best;
}

}  // namespace autoscene::recognition

#pragma once
// Finds one template image in frames. The template and the settings are shared by
// every worker thread; each thread keeps its own match record, and within one cycle
// a rectangle is matched at most once per thread. A cycle id names one frame of the
// thread's: the cycle's colour searches share reduced copies of it.

#include <QRect>
#include <QString>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <optional>
#include <thread>
#include <vector>

#include "recognition/TemplateSearch.h"
#include "system/PerThread.h"

namespace autoscene::recognition {

// How a region is prepared before matching; the template file is stored prepared.
enum class MatchImageType : int { Invalid = 0, Color = 1, Threshold = 2, Hls = 3, FilterColor = 4 };

enum MatchStatus : int {
    kMatchOk = 0,
    kMatchBadFormat = -1,
    kMatchMissingImage = -2,
    kMatchAreaTooSmall = -3,
};

// The text shown for a status; empty for kMatchOk.
QString matchStatusText(int status);

struct MatchResult {
    QRect searched;  // as asked, before clipping
    int status = kMatchOk;
    QRect match;  // position and template size
    float score = 0.0f;
    // The region as matched: a view into the frame for colour images (valid until
    // the next capture), the converted pixels otherwise.
    cv::Mat region;
};

struct MatchRecord {
    std::int64_t cycleId = -1;
    bool found = false;
    int status = kMatchOk;
    // Only the first `resultCount` entries belong to the cycle; the rest keep their
    // buffers for the next one.
    std::vector<MatchResult> results;
    size_t resultCount = 0;
    SearchScratch search;
    // The rectangle last searched in `cycleId` and what the search found there; its scores
    // are still in `search`.
    std::optional<QRect> searchedRect;
    BestMatch searchedBest;

    const MatchResult* resultFor(const QRect& searched) const;
};

class TemplateMatcher {
public:
    struct Settings {
        QString filePath;
        std::optional<QRect> searchRect;  // nothing: the whole frame
        MatchImageType imageType = MatchImageType::Color;
        float similarity = 0.8f;
        int thresholdValue = 128;
        std::int64_t filterColor = 0;  // 0xRRGGBB
        float filterSimilarity = 0.9f;
        int expandSizePx = 0;
        // Score every position instead of searching coarse to fine; the two give the
        // same results, this one far more slowly (kept as the reference).
        bool exhaustiveSearch = false;
    };

    explicit TemplateMatcher(Settings settings);

    // The search rectangle, expanded; the whole frame when there is none.
    QRect defaultRect(const cv::Mat& frame) const;
    void matchDefault(const cv::Mat& frame, std::int64_t cycleId);
    // In list order; unless `all`, stops at the first rectangle where it is found.
    void matchRects(const cv::Mat& frame, const std::vector<QRect>& rects, bool all,
                    std::int64_t cycleId);
    void matchIn(const cv::Mat& frame, const QRect& rect, std::int64_t cycleId);
    // In `rects` up to the first find, or in the default rectangle when there are
    // none; the result to show for it, carrying the record's status.
    MatchResult find(const cv::Mat& frame, const std::vector<QRect>& rects, std::int64_t cycleId);

    // The calling thread's record.
    const MatchRecord& record();
    // The result of the default rectangle, or an empty one.
    MatchResult defaultResult(const cv::Mat& frame);
    // Of the first `resultCount` results: the first found, else the best scored.
    MatchResult bestResult();

    // Every place in `rect` where the template scores at least `floor` (rounded as the
    // matches are), best first, at most `limit`, for showing a user what a search sees;
    // the status says why there are none when the search cannot run. Searches of one
    // cycle share the reduced frame; when this thread's last search in the cycle was of
    // `rect`, its scores serve again. With `near`, only places whose reduced scores come
    // close to it are scored at full size (searchNear): exact at `near` and above, those
    // below it listed where found on the way.
    std::vector<MatchResult> candidates(const cv::Mat& frame, const QRect& rect, float floor,
                                        size_t limit, std::int64_t cycleId, int* status = nullptr,
                                        std::optional<float> near = std::nullopt);

    const Settings& settings() const { return settings_; }
    cv::Size templateSize() const;

private:
    void ensureLoaded();
    void matchInto(MatchRecord& record, const cv::Mat& frame, const QRect& rect,
                   std::int64_t cycleId) const;
    void prepareRegion(const cv::Mat& frameRegion, cv::Mat& region) const;
    // The part of the frame searched for `rect`, or nothing when the template does not fit.
    std::optional<cv::Rect> searchedArea(const cv::Mat& frame, const QRect& rect) const;
    const SearchCycle* sharedCycle(const SearchCycle& cycle) const;

    const Settings settings_;
    std::mutex loadMutex_;
    std::atomic<bool> loaded_{false};
    cv::Mat template_;
    bool templateValid_ = false;
    sys::PerThread<MatchRecord> records_;
};

}  // namespace autoscene::recognition

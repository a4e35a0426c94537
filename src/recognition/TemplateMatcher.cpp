#include "recognition/TemplateMatcher.h"

#include <QLoggingCategory>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "recognition/ColorSearch.h"
#include "recognition/TemplateImage.h"

namespace autoscene::recognition {

Q_LOGGING_CATEGORY(lcMatcher, "autoscene.engine.matcher")

QString matchStatusText(int status) {
    switch (status) {
        case kMatchBadFormat:
            return QStringLiteral("图片格式错误，请重新添加");
        case kMatchMissingImage:
            return QStringLiteral("图片不存在，请重新添加");
        case kMatchAreaTooSmall:
            return QStringLiteral("查找范围小于图片大小");
        default:
            return {};
    }
}

namespace {

std::int64_t swapRedBlue(std::int64_t rgb) {
    return (rgb & 0xff) << 16 | (rgb & 0xff00) | ((rgb >> 16) & 0xff);
}

// Scores are compared and shown with two decimals.
float roundedScore(double score) {
    return float(std::round(score * 100.0) / 100.0);
}

}  // namespace

const MatchResult* MatchRecord::resultFor(const QRect& searched) const {
    for (size_t i = 0; i < resultCount; ++i) {
        if (results[i].searched == searched) {
            return &results[i];
        }
    }
    return nullptr;
}

TemplateMatcher::TemplateMatcher(Settings settings) : settings_(std::move(settings)) {}

void TemplateMatcher::ensureLoaded() {
    if (loaded_.load(std::memory_order_acquire)) {
        return;
    }
    std::lock_guard lock(loadMutex_);
    if (loaded_.load(std::memory_order_relaxed)) {
        return;
    }
    // A failed load leaves loaded_ clear, so the next use tries again.
    cv::Mat image = readTemplateImage(settings_.filePath, settings_.imageType);
    if (image.empty()) {
        qCDebug(lcMatcher) << "template not readable:" << settings_.filePath;
        return;
    }
    // matchTemplate takes 8-bit pixels only, whatever the channel count.
    const bool eightBit = image.depth() == CV_8U;
    switch (settings_.imageType) {
        case MatchImageType::Color:
        case MatchImageType::Hls:
            templateValid_ = eightBit && image.channels() == 3;
            break;
        case MatchImageType::Threshold:
        case MatchImageType::FilterColor:
            templateValid_ = eightBit && image.channels() == 1;
            break;
        default:
            break;
    }
    template_ = std::move(image);
    loaded_.store(true, std::memory_order_release);
}

cv::Size TemplateMatcher::templateSize() const {
    return loaded_.load(std::memory_order_acquire) ? template_.size() : cv::Size();
}

QRect TemplateMatcher::defaultRect(const cv::Mat& frame) const {
    QRect rect = settings_.searchRect.value_or(QRect(0, 0, frame.cols, frame.rows));
    if (settings_.searchRect && settings_.expandSizePx > 0) {
        const int expand = settings_.expandSizePx;
        rect.adjust(-expand, -expand, expand, expand);
    }
    return rect;
}

void TemplateMatcher::matchDefault(const cv::Mat& frame, std::int64_t cycleId) {
    matchIn(frame, defaultRect(frame), cycleId);
}

void TemplateMatcher::matchRects(const cv::Mat& frame, const std::vector<QRect>& rects, bool all,
                                 std::int64_t cycleId) {
    for (const QRect& rect : rects) {
        matchIn(frame, rect, cycleId);
        if (!all && records_.get().found) {
            return;
        }
    }
}

void TemplateMatcher::matchIn(const cv::Mat& frame, const QRect& rect, std::int64_t cycleId) {
    ensureLoaded();
    matchInto(records_.get(), frame, rect, cycleId);
}

void TemplateMatcher::prepareRegion(const cv::Mat& frameRegion, cv::Mat& region) const {
    switch (settings_.imageType) {
        case MatchImageType::Threshold:
            cv::cvtColor(frameRegion, region, cv::COLOR_BGR2GRAY);
            cv::threshold(region, region, settings_.thresholdValue, 255, cv::THRESH_BINARY);
            break;
        case MatchImageType::Hls:
            cv::cvtColor(frameRegion, region, cv::COLOR_BGR2HLS);
            break;
        case MatchImageType::FilterColor:
            // The stored masks were made from RGB pixels with the colour's bounds in
            // blue, green, red order; swapping the colour's red and blue gives the same
            // mask on BGR pixels without converting the region.
            filterColor(frameRegion, swapRedBlue(settings_.filterColor), settings_.filterSimilarity,
                        region);
            break;
        default:
            region = frameRegion;
            break;
    }
}

const SearchCycle* TemplateMatcher::sharedCycle(const SearchCycle& cycle) const {
    // Only colour regions view the frame itself, which the cycle's other templates search
    // too.
    return settings_.imageType == MatchImageType::Color ? &cycle : nullptr;
}

std::optional<cv::Rect> TemplateMatcher::searchedArea(const cv::Mat& frame,
                                                      const QRect& rect) const {
    const int x0 = std::max(rect.x(), 0);
    const int y0 = std::max(rect.y(), 0);
    // A negative left or top keeps the full width and height; only a rectangle that
    // ends before the frame begins is left with nothing.
    const bool before = rect.x() + rect.width() <= 0 || rect.y() + rect.height() <= 0;
    const int width = before ? 0 : std::min({rect.width(), frame.cols, frame.cols - x0});
    const int height = before ? 0 : std::min({rect.height(), frame.rows, frame.rows - y0});
    if (template_.cols > width || template_.rows > height) {
        return std::nullopt;
    }
    // One pixel wider and taller where the frame has it; the size check above stays on
    // the clipped area.
    return cv::Rect(x0, y0, std::min(width + 1, frame.cols - x0),
                    std::min(height + 1, frame.rows - y0));
}

std::vector<MatchResult> TemplateMatcher::candidates(const cv::Mat& frame, const QRect& rect,
                                                     float floor, size_t limit,
                                                     std::int64_t cycleId, int* status,
                                                     std::optional<float> near) {
    ensureLoaded();
    int why = template_.empty() ? kMatchMissingImage : templateValid_ ? kMatchOk : kMatchBadFormat;
    std::vector<MatchResult> found;
    const std::optional<cv::Rect> area =
        why == kMatchOk && !frame.empty() ? searchedArea(frame, rect) : std::nullopt;
    if (why == kMatchOk && !frame.empty() && !area) {
        why = kMatchAreaTooSmall;
    }
    if (area) {
        MatchRecord& record = records_.get();
        cv::Mat region;
        prepareRegion(frame(*area), region);
        const SearchCycle cycle{sys::threadKey(), cycleId};
        // Rounding may lift a score just under the floor onto it.
        const double lowest = double(floor) - 0.005;
        const bool searched =
            record.cycleId == cycleId && record.searchedRect == rect && !settings_.exhaustiveSearch;
        std::vector<BestMatch> matches =
            searched
                ? listAround(region, template_, record.searchedBest, lowest, limit, record.search)
            : near ? searchNear(region, template_, lowest, double(*near) - 0.005, limit,
                                record.search, sharedCycle(cycle))
                   : searchAll(region, template_, lowest, limit, record.search, sharedCycle(cycle));
        record.searchedRect.reset();
        for (const BestMatch& match : matches) {
            MatchResult result;
            result.searched = rect;
            result.match =
                QRect(area->x + match.at.x, area->y + match.at.y, template_.cols, template_.rows);
            result.score = roundedScore(match.score);
            if (result.score >= floor) {
                found.push_back(std::move(result));
            }
        }
    }
    if (status) {
        *status = why;
    }
    return found;
}

void TemplateMatcher::matchInto(MatchRecord& record, const cv::Mat& frame, const QRect& rect,
                                std::int64_t cycleId) const {
    if (record.cycleId != cycleId) {
        record.resultCount = 0;
    } else if (const MatchResult* cached = record.resultFor(rect)) {
        record.status = cached->status;
        record.found = cached->status == kMatchOk && cached->score >= settings_.similarity;
        return;
    }
    if (template_.empty()) {
        record.found = false;
        record.status = kMatchMissingImage;
        return;
    }
    if (!templateValid_) {
        record.found = false;
        record.status = kMatchBadFormat;
        return;
    }
    if (frame.empty()) {
        record.found = false;
        return;
    }
    record.cycleId = cycleId;
    if (record.resultCount == record.results.size()) {
        record.results.emplace_back();
    }
    MatchResult& result = record.results[record.resultCount++];
    result.searched = rect;
    result.match = {};
    result.score = 0.0f;
    result.status = kMatchOk;

    const std::optional<cv::Rect> area = searchedArea(frame, rect);
    if (!area) {
        result.status = kMatchAreaTooSmall;
        result.region.release();
    } else {
        prepareRegion(frame(*area), result.region);
        const SearchCycle cycle{sys::threadKey(), cycleId};
        const BestMatch best =
            settings_.exhaustiveSearch
                ? searchExhaustive(result.region, template_, record.search)
                : searchCoarseToFine(result.region, template_, record.search, sharedCycle(cycle));
        result.match =
            QRect(area->x + best.at.x, area->y + best.at.y, template_.cols, template_.rows);
        result.score = roundedScore(best.score);
        record.searchedRect = rect;
        record.searchedBest = best;
    }
    record.status = result.status;
    record.found = result.status == kMatchOk && result.score >= settings_.similarity;
}

MatchResult TemplateMatcher::find(const cv::Mat& frame, const std::vector<QRect>& rects,
                                  std::int64_t cycleId) {
    MatchResult result;
    if (rects.empty()) {
        matchDefault(frame, cycleId);
        result = defaultResult(frame);
    } else {
        matchRects(frame, rects, false, cycleId);
        result = bestResult();
    }
    if (result.status == kMatchOk) {
        result.status = records_.get().status;
    }
    return result;
}

const MatchRecord& TemplateMatcher::record() {
    return records_.get();
}

MatchResult TemplateMatcher::defaultResult(const cv::Mat& frame) {
    const MatchRecord& own = records_.get();
    if (const MatchResult* result = own.resultFor(defaultRect(frame))) {
        return *result;
    }
    return {};
}

MatchResult TemplateMatcher::bestResult() {
    const MatchRecord& own = records_.get();
    const MatchResult* best = nullptr;
    for (size_t i = 0; i < own.resultCount; ++i) {
        const MatchResult& result = own.results[i];
        if (result.status == kMatchOk && result.score >= settings_.similarity) {
            return result;
        }
        if (!best || result.score > best->score) {
            best = &result;
        }
    }
    if (best) {
        return *best;
    }
    MatchResult none;
    none.status = own.status;
    return none;
}

}  // namespace autoscene::recognition

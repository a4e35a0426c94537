#include "recognition/ReducedFrames.h"

namespace autoscene::recognition {

namespace {

bool sameRegion(const cv::Mat& a, const cv::Mat& b) {
    return a.data == b.data && a.size() == b.size() && a.step == b.step && a.type() == b.type();
}

}  // namespace

ReducedFrames& ReducedFrames::shared() {
    static ReducedFrames frames;
    return frames;
}

cv::Mat ReducedFrames::get(const SearchCycle& cycle, const cv::Mat& region, cv::Size factor,
                           const std::function<void(const cv::Mat&, cv::Mat&)>& reduce) {
    // Held while reducing: another template of the cycle waits for the copy rather than
    // making its own.
    std::lock_guard lock(mutex_);
    for (const Entry& entry : entries_) {
        if (entry.cycle.worker == cycle.worker && entry.cycle.cycle == cycle.cycle &&
            entry.factor == factor && sameRegion(entry.region, region)) {
            return entry.reduced;
        }
    }
    Entry& entry = entries_[next_];
    next_ = (next_ + 1) % kCapacity;
    entry = {cycle, region, factor, cv::Mat()};
    reduce(region, entry.reduced);
    return entry.reduced;
}

}  // namespace autoscene::recognition

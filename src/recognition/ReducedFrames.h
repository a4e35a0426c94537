#pragma once
// Reduced copies of the regions searched in one worker's cycle, shared by every template
// searched there at the same reduction: reducing a whole frame costs about as much as
// searching the reduced copy. A worker's frame stays the same through a cycle (it is
// captured before the cycle starts), so the worker, the cycle and the region's pixels
// name a copy; an entry keeps the region's pixels alive, so another frame cannot take
// their place while it is kept.

#include <array>
#include <cstdint>
#include <functional>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <thread>

namespace autoscene::recognition {

// Which worker searches, in which cycle; searches that name none share nothing.
struct SearchCycle {
    std::thread::id worker;
    std::int64_t cycle = 0;
};

class ReducedFrames {
public:
    // The process's copies, a few at a time: a cycle's regions come one after another.
    static ReducedFrames& shared();

    // The copy of `region` reduced by `factor`, made with `reduce` when not kept. Safe
    // from several threads; the copy is never written again.
    cv::Mat get(const SearchCycle& cycle, const cv::Mat& region, cv::Size factor,
                const std::function<void(const cv::Mat&, cv::Mat&)>& reduce);

private:
    struct Entry {
        SearchCycle cycle;
        cv::Mat region;  // pins the pixels the copy was made from
        cv::Size factor;
        cv::Mat reduced;
    };
    static constexpr size_t kCapacity = 8;

    std::mutex mutex_;
    std::array<Entry, kCapacity> entries_;
    size_t next_ = 0;  // the entry replaced next
};

}  // namespace autoscene::recognition

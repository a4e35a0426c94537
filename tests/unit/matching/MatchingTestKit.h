#pragma once
// Shared by the matching tests: random frames to cut templates from.

#include <cstdint>
#include <opencv2/core.hpp>

namespace autoscene::test {

// Uniform noise: a piece cut from it matches only where it was cut.
inline cv::Mat noiseFrame(int cols, int rows, std::uint64_t seed) {
    cv::Mat frame(rows, cols, CV_8UC3);
    cv::RNG rng(seed);
    rng.fill(frame, cv::RNG::UNIFORM, 0, 256);
    return frame;
}

}  // namespace autoscene::test

#pragma once
// Shared by the matching tests: random frames to cut templates from.

#include <cstdint>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
namespace autoscene::test {

// Uniform noise: a piece cut from it matches only where it was cut.
inline cv::Mat noiseFrame(int cols, int rows, std::uint64_t seed) {
    cv::Mat frame(rows, cols, CV_8UC3);
    cv::RNG rng(seed);
    rng.fill(frame, cv::RNG::UNIFORM, 0, 256);
    return frame;
}

// Noise smooth enough to keep itself on reduced copies.
inline cv::Mat blurredNoise(int cols, int rows, std::uint64_t seed) {
    cv::Mat frame = noiseFrame(cols, rows, seed);
    cv::GaussianBlur(frame, frame, cv::Size(5, 5), 0);
    return frame;
}

}  // namespace autoscene::test

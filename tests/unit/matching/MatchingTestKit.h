#pragma once
// Shared by the matching tests: random frames to cut templates from, a label model.

#include <QDir>
#include <cmath>
#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "NoRunControl.h"
#include "TestFiles.h"
#include "recognition/LabelDetector.h"

namespace autoscene::test {

// Uniform noise: a piece cut from it matches only where it was cut.
inline cv::Mat noiseFrame(int cols, int rows, std::uint64_t seed) {
    cv::Mat frame(rows, cols, CV_8UC3);
    cv::RNG rng(seed);
    rng.fill(frame, cv::RNG::UNIFORM, 0, 256);
    return frame;
}

// The label model `id` of the task in `taskFolder`, small enough to write here: it sees one
// "button" of 16x8 centred in every 32x32 input with probability 0.8 (one 32x32 convolution
// with zero weights, the biases making the box). `cutFloats` weights are left off the end.
inline recognition::LabelModelFiles writeTinyLabelModel(const QString& taskFolder,
                                                        const QString& id, int cutFloats = 0) {
    const recognition::LabelModelFiles files = recognition::labelModelFiles(taskFolder, id);
    EXPECT_TRUE(QDir(taskFolder).mkpath(QStringLiteral("model")));
    writeFile(files.configuration,
              "[net]\nwidth=32\nheight=32\nchannels=3\n"
              "[convolutional]\nfilters=18\nsize=32\nstride=32\npad=0\nactivation=linear\n"
              "[yolo]\nmask=0,1,2\nanchors=16,8, 8,8, 4,4\nclasses=1\nnum=3\n");
    writeFile(files.names, "button\n");
    std::vector<float> values(18 + 18 * 3 * 32 * 32 - cutFloats, 0.0f);
    // The 18 filters' biases, by anchor: x, y, w, h, objectness, class.
    const float biases[18] = {0, 0, 0, 0,   12, std::log(0.8f / 0.2f), 0, 0, 0, 0, -12, 0, 0,
                              0, 0, 0, -12, 0};
    std::copy(std::begin(biases), std::end(biases), values.begin());
    const std::int32_t header[5] = {0, 2, 0, 0, 0};  // version 0.2.0, 64 bits of images seen
    writeFile(files.weights, QByteArray(reinterpret_cast<const char*>(header), sizeof header) +
                                 QByteArray(reinterpret_cast<const char*>(values.data()),
                                            qsizetype(values.size() * sizeof(float))));
    return files;
}

}  // namespace autoscene::test

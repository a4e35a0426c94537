#pragma once
// A label model small enough to write in a test: darknet configuration, weights and names.

#include <QDir>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "TestFiles.h"
#include "recognition/LabelDetector.h"

namespace autoscene::testing {

// A network that sees one "button" of 16x8 in every 32x32 input, centred, with probability
// 0.8: one 32x32 convolution with zero weights, the biases making the box.
inline recognition::LabelModelFiles tinyModel(const QDir& folder) {
    const recognition::LabelModelFiles files{folder.filePath("tiny.cfg"),
                                             folder.filePath("tiny.weights"),
                                             folder.filePath("tiny.names")};
    test::writeFile(files.configuration,
                    "[net]\nwidth=32\nheight=32\nchannels=3\n"
                    "[convolutional]\nfilters=18\nsize=32\nstride=32\npad=0\nactivation=linear\n"
                    "[yolo]\nmask=0,1,2\nanchors=16,8, 8,8, 4,4\nclasses=1\nnum=3\n");
    test::writeFile(files.names, "button\n");
    std::vector<float> values(18 + 18 * 3 * 32 * 32, 0.0f);
    const float logit = std::log(0.8f / 0.2f);
    const float biases[18] = {0, 0, 0, 0, 12, logit, 0, 0, 0, 0, -12, 0, 0, 0, 0, 0, -12, 0};
    std::copy(std::begin(biases), std::end(biases), values.begin());
    const std::int32_t header[5] = {0, 2, 0, 0, 0};  // version, then 64 bits of images seen
    test::writeFile(files.weights,
                    QByteArray(reinterpret_cast<const char*>(header), sizeof header) +
                        QByteArray(reinterpret_cast<const char*>(values.data()),
                                   qsizetype(values.size() * sizeof(float))));
    return files;
}

}  // namespace autoscene::testing

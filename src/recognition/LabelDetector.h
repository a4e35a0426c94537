#pragma once
// Finds the labels of a task's detection model (darknet YOLO configuration, weights
// and class names) in frames, with OpenCV's DNN module on the CPU. One detector is
// shared by every worker thread of a run; detection is serialised.

#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <vector>

namespace autoscene::recognition {

struct LabelBox {
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // frame pixels
    float probability = 0;
    int classId = -1;
    QString name;  // empty when the id is outside the class list
};

struct LabelModelFiles {
    QString configuration;
    QString weights;
    QString names;
};

// `<task folder>/model/<model id>.cfg`, `.weights` and `.names`; empty paths for a
// model id that is not a plain file name.
LabelModelFiles labelModelFiles(const QString& taskFolder, const QString& modelId);

// Boxes of the rows of a YOLO output ([cx, cy, w, h, objectness, class scores...],
// relative to the network input) whose best class score is at least `threshold`,
// scaled to `frame`, in row order.
std::vector<LabelBox> decodeDetections(const cv::Mat& rows, cv::Size frame, float threshold,
                                       const QStringList& names);

class ILabelDetector {
public:
    virtual ~ILabelDetector() = default;
    // Boxes of `bgr` (3 channels) with a probability of at least `threshold`. The
    // caller holds mutex().
    virtual std::vector<LabelBox> detect(const cv::Mat& bgr, float threshold) = 0;
    // The name of class `id`; empty outside the class list.
    virtual QString className(int id) const = 0;
    // Serialises detection and what callers cache of it.
    std::mutex& mutex() { return mutex_; }

private:
    std::mutex mutex_;
};

class LabelDetector : public ILabelDetector {
public:
    LabelDetector();
    ~LabelDetector() override;
    // Replaces any earlier model; false (logged "load mode failed") when the network
    // cannot be read. A missing names file leaves the class list empty.
    bool load(const LabelModelFiles& files);
    bool loaded() const { return loaded_; }
    // Nothing while no model is loaded.
    std::vector<LabelBox> detect(const cv::Mat& bgr, float threshold) override;
    QString className(int id) const override;

private:
    struct Network;  // keeps the DNN headers out of the runner's
    std::unique_ptr<Network> network_;
    QStringList names_;
    bool loaded_ = false;
};

}  // namespace autoscene::recognition

#include "recognition/LabelDetector.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTextStream>
#include <cmath>
#include <opencv2/dnn.hpp>

namespace autoscene::recognition {

Q_LOGGING_CATEGORY(lcLabels, "autoscene.engine.labels")

namespace {

// Darknet's detector keeps the most probable of overlapping boxes of one class.
constexpr float kOverlapLimit = 0.4f;
constexpr int kMaxInputSide = 8192;

// The network input size from the configuration's [net] section; empty when it is
// missing or out of range.
cv::Size networkInput(const QString& configuration) {
    QFile file(configuration);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {};
    }
    QTextStream in(&file);
    bool inNet = false;
    int width = 0;
    int height = 0;
    while (!in.atEnd()) {
        const QString line = in.readLine().section(QLatin1Char('#'), 0, 0).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            if (inNet) {
                break;
            }
            inNet = line == QLatin1String("[net]") || line == QLatin1String("[network]");
        } else if (inNet) {
            const QString key = line.section(QLatin1Char('='), 0, 0).trimmed();
            const int value = line.section(QLatin1Char('='), 1).trimmed().toInt();
            if (key == QLatin1String("width")) {
                width = value;
            } else if (key == QLatin1String("height")) {
                height = value;
            }
        }
    }
    const bool valid = width > 0 && height > 0 && width <= kMaxInputSide && height <= kMaxInputSide;
    return valid ? cv::Size(width, height) : cv::Size();
}

QStringList readNames(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCWarning(lcLabels).noquote() << "The keys.txt file was not found";
        return {};
    }
    QStringList names;
    QTextStream in(&file);
    while (!in.atEnd()) {
        names << in.readLine();
    }
    return names;
}

// OpenCV reads a short weights file to its end without a word, leaving the rest
// zero: the file must hold the header and every weight the layers took.
bool weightsComplete(cv::dnn::Net& net, const QString& path) {
    QFile file(path);
    std::int32_t version[3] = {0, 0, 0};
    if (!file.open(QIODevice::ReadOnly) ||
        file.read(reinterpret_cast<char*>(version), sizeof version) != qint64(sizeof version)) {
        return false;
    }
    const bool longSeen =
        version[0] * 10 + version[1] >= 2 && version[0] < 1000 && version[1] < 1000;
    qint64 expected = qint64(sizeof version) + (longSeen ? 8 : 4);
    for (const cv::String& name : net.getLayerNames()) {
        const cv::Ptr<cv::dnn::Layer> layer = net.getLayer(net.getLayerId(name));
        if (layer->type == "Convolution" || layer->type == "BatchNorm" ||
            layer->type == "InnerProduct") {
            for (const cv::Mat& blob : layer->blobs) {
                expected += qint64(blob.total() * blob.elemSize());
            }
        }
    }
    return file.size() >= expected;
}

}  // namespace

LabelModelFiles labelModelFiles(const QString& taskFolder, const QString& modelId) {
    static const QRegularExpression plainName(QStringLiteral("^[A-Za-z0-9_.-]+$"));
    if (!plainName.match(modelId).hasMatch() || modelId.startsWith(QLatin1Char('.'))) {
        return {};
    }
    const QString base = QDir(taskFolder).filePath(QStringLiteral("model/") + modelId);
    return {base + QStringLiteral(".cfg"), base + QStringLiteral(".weights"),
            base + QStringLiteral(".names")};
}

std::vector<LabelBox> decodeDetections(const cv::Mat& rows, cv::Size frame, float threshold,
                                       const QStringList& names) {
    std::vector<LabelBox> boxes;
    if (rows.empty() || rows.type() != CV_32FC1 || rows.cols < 6) {
        return boxes;
    }
    for (int r = 0; r < rows.rows; ++r) {
        const float* row = rows.ptr<float>(r);
        const cv::Mat classScores(1, rows.cols - 5, CV_32FC1, const_cast<float*>(row + 5));
        double best = 0;
        cv::Point at;
        cv::minMaxLoc(classScores, nullptr, &best, nullptr, &at);
        // Written so that a NaN from a broken model is dropped too.
        if (!(float(best) >= threshold) || !std::isfinite(row[0] + row[1] + row[2] + row[3])) {
            continue;
        }
        LabelBox box;
        box.x1 = (row[0] - row[2] / 2) * float(frame.width);
        box.y1 = (row[1] - row[3] / 2) * float(frame.height);
        box.x2 = box.x1 + row[2] * float(frame.width);
        box.y2 = box.y1 + row[3] * float(frame.height);
        box.probability = float(best);
        box.classId = at.x;
        box.name = at.x < names.size() ? names[at.x] : QString();
        boxes.push_back(box);
    }
    // Per class, the most probable of overlapping boxes stays; the order stays too.
    std::vector<bool> kept(boxes.size(), false);
    std::vector<bool> seen(boxes.size(), false);
    for (size_t i = 0; i < boxes.size(); ++i) {
        if (seen[i]) {
            continue;
        }
        std::vector<size_t> members;
        std::vector<cv::Rect2d> classRects;
        std::vector<float> classScores;
        for (size_t j = i; j < boxes.size(); ++j) {
            const LabelBox& b = boxes[j];
            if (!seen[j] && b.classId == boxes[i].classId) {
                seen[j] = true;
                members.push_back(j);
                classRects.emplace_back(b.x1, b.y1, b.x2 - b.x1, b.y2 - b.y1);
                classScores.push_back(b.probability);
            }
        }
        std::vector<int> survivors;
        cv::dnn::NMSBoxes(classRects, classScores, 0.0f, kOverlapLimit, survivors);
        for (const int s : survivors) {
            kept[members[size_t(s)]] = true;
        }
    }
    std::vector<LabelBox> result;
    for (size_t i = 0; i < boxes.size(); ++i) {
        if (kept[i]) {
            result.push_back(std::move(boxes[i]));
        }
    }
    return result;
}

struct LabelDetector::Network {
    cv::dnn::Net net;
    std::vector<cv::String> outputs;
    cv::Size input;
    cv::Mat blob;  // kept between cycles
};

LabelDetector::LabelDetector() = default;
LabelDetector::~LabelDetector() = default;

bool LabelDetector::load(const LabelModelFiles& files) {
    network_.reset();
    names_.clear();
    loaded_ = false;
    auto network = std::make_unique<Network>();
    network->input = networkInput(files.configuration);
    try {
        if (!network->input.empty() && QFileInfo(files.weights).isFile()) {
            cv::dnn::Net& net = network->net;
            net = cv::dnn::readNetFromDarknet(QFile::encodeName(files.configuration).toStdString(),
                                              QFile::encodeName(files.weights).toStdString());
            net.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
            net.setPreferableTarget(cv::dnn::DNN_TARGET_CPU);
            network->outputs = net.getUnconnectedOutLayersNames();
            if (!weightsComplete(net, files.weights)) {
                qCWarning(lcLabels) << "weights file too short:" << files.weights;
                network->outputs.clear();
            }
        }
    } catch (const cv::Exception& e) {
        qCDebug(lcLabels) << e.what();
        network->outputs.clear();
    }
    if (network->net.empty() || network->outputs.empty()) {
        qCWarning(lcLabels).noquote() << "load mode failed";
        return false;
    }
    network_ = std::move(network);
    names_ = readNames(files.names);
    loaded_ = true;
    return true;
}

std::vector<LabelBox> LabelDetector::detect(const cv::Mat& bgr, float threshold) {
    if (!loaded_ || bgr.empty() || bgr.type() != CV_8UC3) {
        return {};
    }
    try {
        Network& n = *network_;
        cv::dnn::blobFromImage(bgr, n.blob, 1.0 / 255.0, n.input, cv::Scalar(), true, false);
        n.net.setInput(n.blob);
        std::vector<cv::Mat> outs;
        n.net.forward(outs, n.outputs);
        cv::Mat rows;
        cv::vconcat(outs, rows);
        return decodeDetections(rows, bgr.size(), threshold, names_);
    } catch (const cv::Exception& e) {
        qCWarning(lcLabels) << "detection failed:" << e.what();
        return {};
    }
}

QString LabelDetector::className(int id) const {
    return id >= 0 && id < names_.size() ? names_[id] : QString();
}

}  // namespace autoscene::recognition

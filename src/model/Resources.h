#pragma once
// Records of the pictures and colours that items match against: template images,
// the original screenshots they were cut from, and colour samples.

#include <QRect>
#include <QString>
#include <cstdint>

#include "model/Fields.h"

namespace autoscene::model {

// The screen on which an original was taken.
struct ScreenInfo {
    int width = 0;
    int height = 0;
    int density = 0;
    int pixelStride = 0;
    int rowPadding = 0;

    static constexpr auto fields() {
        using R = ScreenInfo;
        return std::tuple{
            field("width", &R::width),           field("height", &R::height),
            field("density", &R::density),       field("pixelStride", &R::pixelStride),
            field("rowPadding", &R::rowPadding),
        };
    }
};

// Matching methods of an image (`type`).
enum class ImageType : int { Invalid = 0, Color = 1, Threshold = 2, Hls = 3, FilterColor = 4 };

struct ImageRecord {
    int id = 0;
    QString name;
    QString file;  // PNG file name in the task's image folder
    int ori = 0;
    QRect rect;
    float sim = 0.8f;
    int type = int(ImageType::Color);
    int threshold = 128;
    std::int64_t filterColor = 0;
    float filterSim = 0.9f;
    int useCount = 0;  // how many items use the image; written, never read
    ScreenInfo screenInfo;

    static constexpr auto fields() {
        using R = ImageRecord;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("file", &R::file),
            field("ori", &R::ori, Ref::Original),
            field("rect", &R::rect),
            field("sim", &R::sim),
            field("type", &R::type),
            field("threshold", &R::threshold),
            field("filter_color", &R::filterColor),
            field("filter_sim", &R::filterSim),
            writeOnlyField("use_count", &R::useCount),
            field("screen_info", &R::screenInfo),
        };
    }
};

struct OriginalImageRecord {
    int id = 0;
    QString name;

    static constexpr auto fields() {
        using R = OriginalImageRecord;
        return std::tuple{field("name", &R::name), field("id", &R::id)};
    }
};

struct ColorRecord {
    int id = 0;
    QString name;
    float sim = 0.9f;
    std::int64_t color = 0;  // 0xRRGGBB

    static constexpr auto fields() {
        using R = ColorRecord;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("sim", &R::sim),
            field("color", &R::color),
        };
    }

    // "#RRGGBB".
    QString displayText() const;
};

}  // namespace autoscene::model

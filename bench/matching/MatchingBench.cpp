// One cycle of 20 image conditions on synthetic 1280x720 and 1920x1080 frames
// (templates of 24x24 to 160x90, every fourth absent), searching the whole frame
// or rectangles twice the template's size: the bare OpenCV calls in a loop, the
// engine one condition after another and on the detection pool with the exhaustive
// search (the matcher as it was) and with the coarse-to-fine search, and the same
// cycle again (cache hits). Also the colour count on 200x200 and on the frame.

#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <map>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <tuple>
#include <vector>

#include "conditions/ImageCondition.h"
#include "engine/RunClock.h"
#include "engine/Scene.h"
#include "engine/ScreenDetection.h"
#include "recognition/ColorSearch.h"
#include "recognition/DetectionPool.h"

using namespace autoscene::engine;
using namespace autoscene::recognition;
using namespace autoscene::conditions;

namespace {

constexpr int kTemplates = 20;

enum Mode : int { Bare = 0, Engine = 1, EnginePool = 2, CacheHit = 3, Fast = 4, FastPool = 5 };

struct Setup {
    cv::Mat frame;
    std::vector<cv::Mat> templates;
    std::vector<cv::Rect> regions;  // what the bare calls search
    std::vector<std::shared_ptr<RuntimeEvent>> events;
};

cv::Mat noise(cv::Size size, std::uint64_t seed) {
    cv::Mat image(size, CV_8UC3);
    cv::RNG(seed).fill(image, cv::RNG::UNIFORM, 0, 256);
    cv::GaussianBlur(image, image, cv::Size(5, 5), 0);
    return image;
}

// Built once per frame size, search kind and search; the files stay for the whole run.
Setup& setup(int frameRows, bool withRects, bool exhaustive) {
    static QTemporaryDir dir;
    static RunClock clock;
    static std::map<std::tuple<int, bool, bool>, Setup> setups;
    auto [it, added] = setups.try_emplace({frameRows, withRects, exhaustive});
    Setup& s = it->second;
    if (!added) {
        return s;
    }
    s.frame = noise(frameRows == 720 ? cv::Size(1280, 720) : cv::Size(1920, 1080), 1);
    const cv::Mat elsewhere = noise(s.frame.size(), 2);
    auto event = std::make_shared<RuntimeEvent>();
    event->conditions = std::make_unique<ItemGroup>();
    cv::RNG rng(3);
    for (int i = 0; i < kTemplates; ++i) {
        const cv::Size size(24 + (160 - 24) * i / (kTemplates - 1),
                            24 + (90 - 24) * i / (kTemplates - 1));
        const cv::Point at(rng.uniform(size.width, s.frame.cols - 2 * size.width),
                           rng.uniform(size.height, s.frame.rows - 2 * size.height));
        const cv::Mat& source = i % 4 == 3 ? elsewhere : s.frame;
        s.templates.push_back(source(cv::Rect(at, size)).clone());
        const cv::Rect rect(at.x - size.width / 2, at.y - size.height / 2, 2 * size.width,
                            2 * size.height);
        // The engine searches one pixel wider and taller; the bare calls get the same.
        const cv::Rect region(rect.x, rect.y, rect.width + 1, rect.height + 1);
        s.regions.push_back(withRects ? region : cv::Rect(0, 0, s.frame.cols, s.frame.rows));

        TemplateMatcher::Settings settings;
        settings.filePath = dir.filePath(
            QStringLiteral("%1-%2-%3-%4.png").arg(frameRows).arg(withRects).arg(exhaustive).arg(i));
        settings.exhaustiveSearch = exhaustive;
        cv::imwrite(settings.filePath.toStdString(), s.templates.back());
        if (withRects) {
            settings.searchRect = QRect(rect.x, rect.y, rect.width, rect.height);
        }
        event->conditions->append(std::make_unique<ImageCondition>(
            1, ScreenItem::Settings{}, clock, QString(),
            std::make_shared<TemplateMatcher>(settings), SearchArea()));
    }
    s.events.push_back(std::move(event));
    return s;
}

void engineCycle(Setup& s, TaskInfo& task, DetectionPool& pool) {
    prepareScreenItems(s.events, task,
                       [&pool](size_t count, const auto& job) { pool.run(count, job); });
    for (const auto& item : s.events[0]->conditions->items()) {
        benchmark::DoNotOptimize(item->evaluate(task));
    }
}

void BM_Cycle(benchmark::State& state) {
    const Mode mode = Mode(state.range(2));
    Setup& s = setup(int(state.range(0)), state.range(1) != 0, mode != Fast && mode != FastPool);
    static DetectionPool sequential(0);
    DetectionPool& pool =
        mode == EnginePool || mode == FastPool ? DetectionPool::shared() : sequential;
    TaskInfo task;
    task.frame = s.frame;
    cv::Mat scores;
    engineCycle(s, task, pool);  // loads the templates
    for (auto _ : state) {
        if (mode == Bare) {
            for (int i = 0; i < kTemplates; ++i) {
                cv::matchTemplate(s.frame(s.regions[size_t(i)]), s.templates[size_t(i)], scores,
                                  cv::TM_CCOEFF_NORMED);
                double best = 0;
                cv::minMaxLoc(scores, nullptr, &best);
                benchmark::DoNotOptimize(best);
            }
        } else {
            if (mode != CacheHit) {
                ++task.cycleCount;
            }
            engineCycle(s, task, pool);
        }
    }
}

void BM_ColorCount(benchmark::State& state) {
    const cv::Mat frame = noise(cv::Size(1920, 1080), 4);
    const QRect rect = state.range(0) == 0 ? QRect(600, 400, 200, 200) : QRect(0, 0, 1920, 1080);
    cv::Mat mask;
    for (auto _ : state) {
        benchmark::DoNotOptimize(countColor(frame, 0x808080, 0.9f, rect, mask));
    }
}

}  // namespace

BENCHMARK(BM_Cycle)
    ->ArgsProduct({{720, 1080}, {0, 1}, {Bare, Engine, EnginePool, CacheHit, Fast, FastPool}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_ColorCount)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();

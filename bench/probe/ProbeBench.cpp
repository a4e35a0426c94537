// The test on the screen of 20 image conditions on a 1920x1080 frame against one runner
// cycle of the same conditions, over the whole frame and in crops twice each template's
// size (templates of 24x24 to 160x90, every fourth absent). The cycle is timed one
// condition after another and on the detection pool, as the runner detects; the probe
// runs its conditions on the detection pool too.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <map>
#include <memory>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "InProcessTarget.h"
#include "NoRunControl.h"
#include "actions/RuntimeItems.h"
#include "engine/ItemGroup.h"
#include "engine/RunClock.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "engine/Scene.h"
#include "engine/ScreenDetection.h"
#include "model/EditorConditions.h"
#include "model/TaskDocument.h"
#include "probe/ConditionProbe.h"
#include "recognition/DetectionPool.h"

using namespace autoscene;

namespace {

constexpr int kConditions = 20;

// Verdicts: the probe's first step, without looking beyond the crops.
enum Mode : int { CycleOneCore = 0, CyclePool = 1, Verdicts = 2, Probe = 3 };

cv::Mat noise(cv::Size size, std::uint64_t seed) {
    cv::Mat image(size, CV_8UC3);
    cv::RNG(seed).fill(image, cv::RNG::UNIFORM, 0, 256);
    cv::GaussianBlur(image, image, cv::Size(5, 5), 0);
    return image;
}

// A task folder with the templates and crops, and its conditions as the editor holds them.
struct Setup {
    explicit Setup(bool withCrops) {
        frame = noise(cv::Size(1920, 1080), 1);
        const cv::Mat elsewhere = noise(frame.size(), 2);
        QDir().mkpath(dir.filePath(QStringLiteral("image")));
        QString images;
        QString crops;
        cv::RNG rng(3);
        for (int i = 0; i < kConditions; ++i) {
            const cv::Size size(24 + (160 - 24) * i / (kConditions - 1),
                                24 + (90 - 24) * i / (kConditions - 1));
            const cv::Point at(rng.uniform(size.width, frame.cols - 2 * size.width),
                               rng.uniform(size.height, frame.rows - 2 * size.height));
            const cv::Mat& source = i % 4 == 3 ? elsewhere : frame;
            cv::imwrite(dir.filePath(QStringLiteral("image/%1.png").arg(i)).toStdString(),
                        source(cv::Rect(at, size)));
            images += QStringLiteral(R"(%1{"id": %2, "name": "t%2", "file": "%2.png",
                "rect": "%3,%4,%5,%6", "sim": 0.9, "type": 1})")
                          .arg(i ? "," : "")
                          .arg(i)
                          .arg(at.x)
                          .arg(at.y)
                          .arg(size.width)
                          .arg(size.height);
            crops += QStringLiteral(R"(%1{"type": 2, "id": %2, "name": "c%2",
                "rect": "%3,%4,%5,%6"})")
                         .arg(i ? "," : "")
                         .arg(100 + i)
                         .arg(at.x - size.width / 2)
                         .arg(at.y - size.height / 2)
                         .arg(2 * size.width)
                         .arg(2 * size.height);
            auto condition = std::make_unique<model::EditorImageCondition>();
            condition->imageId = i;
            condition->searchId = withCrops ? 100 + i : 0;
            conditions.push_back(std::move(condition));
        }
        QFile file(dir.filePath(QStringLiteral("script.json")));
        file.open(QIODevice::WriteOnly);
        file.write(QStringLiteral(R"({"image_list": [%1], "var_list": [%2]})")
                       .arg(images, crops)
                       .toUtf8());
        file.close();
        document.openFolder(dir.path());
    }

    QTemporaryDir dir;
    cv::Mat frame;
    model::TaskDocument document;
    std::vector<std::unique_ptr<model::EditorImageCondition>> conditions;
};

// The conditions as a runner builds them, in one event.
struct Runner {
    explicit Runner(Setup& s) : document(s.document), definitions(s.document, clock) {
        actions::registerAllRuntimeItems(factory, nullptr);
        auto event = std::make_shared<engine::RuntimeEvent>();
        event->conditions = std::make_unique<engine::ItemGroup>();
        for (const auto& record : s.conditions) {
            event->conditions->append(factory.condition(*record, context));
        }
        events.push_back(std::move(event));
        task.frame = s.frame;
    }

    void cycle(bool onPool) {
        ++task.cycleCount;
        engine::JobRunner jobs;
        if (onPool) {
            jobs = [](size_t count, const auto& job) {
                recognition::DetectionPool::shared().run(count, job);
            };
        }
        engine::prepareScreenItems(events, task, jobs);
        for (const auto& item : events[0]->conditions->items()) {
            benchmark::DoNotOptimize(item->evaluate(task));
        }
    }

    const model::TaskDocument& document;
    engine::RunClock clock;
    engine::RuntimeDefinitions definitions;
    test::InProcessTarget target;
    test::NoRunControl control;
    engine::RunContext context{document, definitions, clock, target, control};
    engine::RuntimeFactory factory;
    std::vector<std::shared_ptr<engine::RuntimeEvent>> events;
    engine::TaskInfo task;
};

void BM_TestOnScreen(benchmark::State& state) {
    static std::map<bool, std::unique_ptr<Setup>> setups;
    const bool withCrops = state.range(0) != 0;
    auto& s = setups[withCrops];
    if (!s) {
        s = std::make_unique<Setup>(withCrops);
    }
    const Mode mode = Mode(state.range(1));
    if (mode == Verdicts || mode == Probe) {
        std::vector<const model::IEditorCondition*> records;
        for (const auto& record : s->conditions) {
            records.push_back(record.get());
        }
        for (auto _ : state) {
            // As the panel tests: a new probe, so nothing is kept from the last frame.
            probe::ConditionProbe probe(s->document);
            std::vector<probe::ProbeResult> results = probe.verdicts(records, s->frame);
            if (mode == Probe) {
                probe.lookBeyond(results);
            }
            benchmark::DoNotOptimize(results.data());
        }
        return;
    }
    Runner runner(*s);
    runner.cycle(false);  // loads the templates
    for (auto _ : state) {
        runner.cycle(mode == CyclePool);
    }
}

}  // namespace

BENCHMARK(BM_TestOnScreen)
    ->ArgsProduct({{0, 1}, {CycleOneCore, CyclePool, Verdicts, Probe}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

BENCHMARK_MAIN();

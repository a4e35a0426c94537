// The two engines of the running service side by side, through the engine's OcrClient
// (PNG encoding and answer parsing included): one-line regions, multi-line regions and
// a 1280x720 frame, one request per repetition so that bench/ocr/print-table can give
// median and 90th percentile; and requests per second of one-line regions with two
// clients at once.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <algorithm>
#include <atomic>
#include <memory>
#include <opencv2/imgcodecs.hpp>

#include "OcrServiceProcess.h"
#include "UiTextCorpus.h"
#include "text/OcrClient.h"

namespace testkit = autoscene::ocr::testkit;
using autoscene::text::OcrEngine;

namespace {

constexpr int kRepetitions = 30;

std::unique_ptr<testkit::OcrServiceProcess> service;
std::unique_ptr<autoscene::text::OcrClient> client;
std::vector<cv::Mat> oneLine;
std::vector<cv::Mat> multiLine;
std::vector<cv::Mat> frame;

cv::Mat decoded(const std::string& png) {
    return cv::imdecode(cv::Mat(1, int(png.size()), CV_8UC1, const_cast<char*>(png.data())),
                        cv::IMREAD_COLOR);
}

// Each call reads the next image of `images`, so the repetitions go round them all.
void read(benchmark::State& state, const std::vector<cv::Mat>& images, OcrEngine engine) {
    static std::atomic<std::size_t> next{0};
    for (auto _ : state) {
        const cv::Mat& image = images[next++ % images.size()];
        benchmark::DoNotOptimize(client->recognise(image, engine));
    }
    state.SetItemsProcessed(state.iterations());
}

double percentile90(const std::vector<double>& values) {
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    return sorted[std::min(sorted.size() - 1, sorted.size() * 9 / 10)];
}

void perRequest(benchmark::internal::Benchmark* b) {
    b->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(kRepetitions)
        ->ComputeStatistics("p90", percentile90);
}

void BM_OneLine_Accurate(benchmark::State& state) {
    read(state, oneLine, OcrEngine::Accurate);
}
void BM_OneLine_Fast(benchmark::State& state) {
    read(state, oneLine, OcrEngine::Fast);
}
void BM_MultiLine_Accurate(benchmark::State& state) {
    read(state, multiLine, OcrEngine::Accurate);
}
void BM_MultiLine_Fast(benchmark::State& state) {
    read(state, multiLine, OcrEngine::Fast);
}
void BM_Frame_Accurate(benchmark::State& state) {
    read(state, frame, OcrEngine::Accurate);
}
void BM_Frame_Fast(benchmark::State& state) {
    read(state, frame, OcrEngine::Fast);
}

BENCHMARK(BM_OneLine_Accurate)->Apply(perRequest);
BENCHMARK(BM_OneLine_Fast)->Apply(perRequest);
BENCHMARK(BM_MultiLine_Accurate)->Apply(perRequest);
BENCHMARK(BM_MultiLine_Fast)->Apply(perRequest);
BENCHMARK(BM_Frame_Accurate)->Apply(perRequest)->Repetitions(8);
BENCHMARK(BM_Frame_Fast)->Apply(perRequest)->Repetitions(8);
// items_per_second of these is requests per second over both clients together.
BENCHMARK(BM_OneLine_Accurate)
    ->Name("BM_TwoClients_Accurate")
    ->UseRealTime()
    ->Threads(2)
    ->Iterations(30);
BENCHMARK(BM_OneLine_Fast)->Name("BM_TwoClients_Fast")->UseRealTime()->Threads(2)->Iterations(30);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    // Two engine sets: the two clients below are served at once.
    service = std::make_unique<testkit::OcrServiceProcess>(MORVANE_OCR_PROGRAM, 2);
    client = std::make_unique<autoscene::text::OcrClient>(service->url());
    for (const testkit::CorpusSample& sample : testkit::uiTextCorpus()) {
        (sample.text.find('\n') == std::string::npos ? oneLine : multiLine)
            .push_back(decoded(sample.png));
    }
    frame.push_back(decoded(testkit::uiTextFrame().png));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    service.reset();
    return 0;
}

// Recognition through the client and the running service against one `tesseract`
// process per image, on the same rendered images; bench/ocr/print-table turns the
// result into ratios.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QGuiApplication>
#include <filesystem>
#include <fstream>
#include <memory>
#include <opencv2/imgcodecs.hpp>

#include "OcrClient.h"
#include "OcrServiceProcess.h"
#include "Process.h"
#include "RenderedText.h"

namespace testkit = autoscene::ocr::testkit;
namespace fs = std::filesystem;

namespace {

struct Image {
    cv::Mat bgr;
    fs::path file;
};

std::unique_ptr<testkit::OcrServiceProcess> service;
std::unique_ptr<autoscene::engine::OcrClient> client;
Image region;
Image frame;

Image makeImage(const std::string& name, QSize size,
                const std::vector<testkit::TextLabel>& labels) {
    const std::string png = testkit::renderTextPng(size, labels);
    Image image{cv::imdecode(cv::Mat(1, int(png.size()), CV_8UC1, const_cast<char*>(png.data())),
                             cv::IMREAD_COLOR),
                fs::temp_directory_path() /
                    ("autoscene-ocr-bench-" + std::to_string(::getpid()) + "-" + name + ".png")};
    std::ofstream(image.file, std::ios::binary) << png;
    return image;
}

void throughService(benchmark::State& state, const Image& image) {
    for (auto _ : state) {
        if (client->recognise(image.bgr).boxes.empty()) {
            state.SkipWithError("no text recognised");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations());
}

void throughTesseractProcess(benchmark::State& state, const Image& image) {
    const std::string command =
        "tesseract " + image.file.string() + " stdout -l chi_sim+eng --psm 11";
    for (auto _ : state) {
        benchmark::DoNotOptimize(autoscene::sys::runCommandCapture(command));
    }
}

void BM_Region400x100_Service(benchmark::State& state) {
    throughService(state, region);
}
void BM_Region400x100_TesseractProcess(benchmark::State& state) {
    throughTesseractProcess(state, region);
}
void BM_Frame1280x720_Service(benchmark::State& state) {
    throughService(state, frame);
}
void BM_Frame1280x720_TesseractProcess(benchmark::State& state) {
    throughTesseractProcess(state, frame);
}

BENCHMARK(BM_Region400x100_Service)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);
BENCHMARK(BM_Region400x100_TesseractProcess)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5);
BENCHMARK(BM_Frame1280x720_Service)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(BM_Frame1280x720_TesseractProcess)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
// items_per_second of this one is requests per second over the four clients together.
BENCHMARK(BM_Region400x100_Service)
    ->Name("BM_Region400x100_Service_FourClients")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Threads(4)
    ->Iterations(10);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    service = std::make_unique<testkit::OcrServiceProcess>(MORVANE_OCR_PROGRAM, 4);
    client = std::make_unique<autoscene::engine::OcrClient>(service->url());
    region = makeImage("region", {400, 100}, {{"开始游戏 Start", {16, 30}, 36}});
    frame = makeImage("frame", {1280, 720},
                      {{"冒险之旅 Adventure", {420, 60}, 48},
                       {"开始游戏", {560, 240}, 36},
                       {"Continue 继续", {540, 320}, 32},
                       {"设置 Settings", {545, 400}, 32},
                       {"退出游戏", {570, 480}, 32},
                       {"金币: 12850", {40, 30}, 24},
                       {"Level 27", {1100, 30}, 24},
                       {"版本 1.4.2", {1120, 680}, 18}});
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    service.reset();
    fs::remove(region.file);
    fs::remove(frame.file);
    return 0;
}

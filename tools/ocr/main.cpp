// morvane-ocr PORT [ENGINES [MODELS]]: the local text-recognition service.
// PORT 0 picks a free port. MODELS is the accurate engine's model folder (default:
// ocr-models beside the program); without usable models the fast engine serves every
// request. The port is bound first; once the models are loaded too, one line
// "morvane-ocr listening on 127.0.0.1:<port>" goes to standard output.

#include <opencv2/core/utils/logger.hpp>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "AccurateModels.h"
#include "AccurateRecogniser.h"
#include "OcrServer.h"
#include "RecogniserPool.h"

namespace {

constexpr int kMaxEngines = 16;

// -1 unless `text` is a whole number from `lowest` to `highest`.
int parseInt(std::string_view text, int lowest, int highest) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < lowest ||
        value > highest) {
        return -1;
    }
    return value;
}

int defaultEngineCount() {
    const unsigned cores = std::thread::hardware_concurrency();
    return cores < 2 ? 2 : cores > 4 ? 4 : static_cast<int>(cores);
}

// The models when they read and run, checked once here so that a bad file is reported
// once and not by every worker; null otherwise.
std::unique_ptr<autoscene::ocr::AccurateModels> loadAccurateModels(
    const std::filesystem::path& folder) {
    try {
        auto models = std::make_unique<autoscene::ocr::AccurateModels>(
            autoscene::ocr::readAccurateModels(folder));
        const autoscene::ocr::AccurateRecogniser check(*models);
        return models;
    } catch (const std::exception& error) {
        std::fprintf(stderr,
                     "morvane-ocr: accurate engine unavailable (%s); serving the fast engine\n",
                     error.what());
        return nullptr;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int port = argc >= 2 ? parseInt(argv[1], 0, 65535) : -1;
    const int engines = argc >= 3 ? parseInt(argv[2], 1, kMaxEngines) : defaultEngineCount();
    if (argc > 4 || port < 0 || engines < 0 || (argc == 4 && argv[3][0] == '\0')) {
        std::fprintf(stderr,
                     "usage: morvane-ocr PORT [ENGINES [MODELS]]\n"
                     "  PORT     0 to 65535 (0: any free port)\n"
                     "  ENGINES  1 to %d recognitions at once\n"
                     "  MODELS   the accurate engine's model folder (default: ocr-models\n"
                     "           beside the program)\n",
                     kMaxEngines);
        return 2;
    }
    // OpenCV's own lines would repeat each model failure; the one line above says it.
    cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
    try {
        // The port first: a busy port is said at once, without loading the models first.
        autoscene::ocr::OcrServer server;
        std::string bindError;
        const int boundPort = server.bind(port, bindError);
        if (boundPort < 0) {
            std::fprintf(stderr, "morvane-ocr: cannot listen on 127.0.0.1:%d: %s\n", port,
                         bindError.c_str());
            return 1;
        }
        const std::unique_ptr<autoscene::ocr::AccurateModels> models = loadAccurateModels(
            argc == 4 ? std::filesystem::path(argv[3]) : autoscene::ocr::defaultModelFolder());
        autoscene::ocr::RecogniserPool pool(engines, "chi_sim+eng", models.get());
        std::printf("morvane-ocr listening on 127.0.0.1:%d\n", boundPort);
        std::fflush(stdout);
        return server.serve(pool) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "morvane-ocr: %s\n", error.what());
        return 1;
    }
}

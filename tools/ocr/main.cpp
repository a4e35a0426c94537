// morvane-ocr PORT [ENGINES]: the local text-recognition service.
// PORT 0 picks a free port. Once the models are loaded and the port is bound, one line
// "morvane-ocr listening on 127.0.0.1:<port>" goes to standard output.

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <thread>

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

}  // namespace

int main(int argc, char** argv) {
    const int port = argc >= 2 ? parseInt(argv[1], 0, 65535) : -1;
    const int engines = argc >= 3 ? parseInt(argv[2], 1, kMaxEngines) : defaultEngineCount();
    if (argc > 3 || port < 0 || engines < 0) {
        std::fprintf(stderr,
                     "usage: morvane-ocr PORT [ENGINES]\n"
                     "  PORT     0 to 65535 (0: any free port)\n"
                     "  ENGINES  1 to %d recognitions at once\n",
                     kMaxEngines);
        return 2;
    }
    try {
        autoscene::ocr::RecogniserPool pool(engines, "chi_sim+eng");
        autoscene::ocr::OcrServer server(pool);
        const int boundPort = server.bind(port);
        if (boundPort < 0) {
            std::fprintf(stderr, "morvane-ocr: cannot listen on 127.0.0.1:%d\n", port);
            return 1;
        }
        std::printf("morvane-ocr listening on 127.0.0.1:%d\n", boundPort);
        std::fflush(stdout);
        return server.serve() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "morvane-ocr: %s\n", error.what());
        return 1;
    }
}

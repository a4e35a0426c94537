#pragma once
// Rendered UI text for recognition tests and the benchmark: Chinese buttons and
// phrases, numbers, mixed Chinese and digits, Latin, 2-3 line dialogs, 12-32 px, on
// plain, gradient and noisy grounds in both polarities. Deterministic. Needs a
// QGuiApplication (the offscreen platform will do).

#include <string>
#include <vector>

namespace autoscene::ocr::testkit {

struct CorpusSample {
    std::string name;  // what it shows, for failure messages
    std::string png;   // the region as PNG bytes
    std::string text;  // the lines, top to bottom, joined by '\n'
};

std::vector<CorpusSample> uiTextCorpus();

// A 1280x720 game-like frame holding many labels; `text` lists them all, unordered.
CorpusSample uiTextFrame();

}  // namespace autoscene::ocr::testkit

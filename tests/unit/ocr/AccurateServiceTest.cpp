// The service with both engines: the rendered UI corpus read by each (rates printed),
// and a start-up with missing or broken model files.

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "AccurateModels.h"
#include "OcrServiceProcess.h"
#include "RenderedText.h"
#include "ServiceAnswer.h"
#include "UiTextCorpus.h"

namespace fs = std::filesystem;
using namespace autoscene::ocr;
using namespace autoscene::ocr::testkit;

namespace {

bool readsAll(const std::vector<std::string>& lines, const std::vector<std::string>& expected) {
    return std::equal(lines.begin(), lines.end(), expected.begin(), expected.end(), readsExactly);
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : " / ") + line;
    }
    return text;
}

bool modelsInstalled() {
    return fs::exists(fs::path(MORVANE_OCR_MODELS) / kCharacterFile);
}

std::string fileText(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

TEST(AccurateService, ReadsTheRenderedUiCorpusAtLeastNinetyPercentExactly) {
    if (!modelsInstalled()) {
        GTEST_SKIP() << "no models in " << MORVANE_OCR_MODELS << "; run scripts/fetch-ocr-models";
    }
    const OcrServiceProcess service(MORVANE_OCR_PROGRAM, 2, MORVANE_OCR_MODELS);
    const std::vector<CorpusSample> corpus = uiTextCorpus();
    int accurateExact = 0;
    int fastExact = 0;
    for (const CorpusSample& sample : corpus) {
        const ServiceAnswer accurate = readServiceAnswer(service.detect(sample.png, "accurate"));
        const ServiceAnswer fast = readServiceAnswer(service.detect(sample.png, "fast"));
        ASSERT_EQ(accurate.engine, "accurate");
        ASSERT_EQ(fast.engine, "fast");
        if (readsAll(accurate.lines(), sample.lines)) {
            ++accurateExact;
        } else {
            std::printf("  accurate misread %s as \"%s\"\n", sample.name.c_str(),
                        joined(accurate.lines()).c_str());
        }
        fastExact += readsAll(fast.lines(), sample.lines) ? 1 : 0;
    }
    const double total = double(corpus.size());
    std::printf("UI corpus, %zu images exact: accurate %d (%.1f %%), fast %d (%.1f %%)\n",
                corpus.size(), accurateExact, 100.0 * accurateExact / total, fastExact,
                100.0 * fastExact / total);
    EXPECT_GE(accurateExact, 0.9 * total);

    // Most of a whole frame's labels, each on its own box.
    const CorpusSample frame = uiTextFrame();
    const std::vector<std::string> read = readServiceAnswer(service.detect(frame.png)).lines();
    int found = 0;
    for (const std::string& label : frame.lines) {
        for (const std::string& line : read) {
            found += readsExactly(line, label) ? 1 : 0;
        }
    }
    std::printf("1280x720 frame: %d of %zu labels read exactly\n", found, frame.lines.size());
    EXPECT_GE(found, int(frame.lines.size()) * 9 / 10);
}

TEST(AccurateService, ServesTheFastEngineWhenTheModelsAreMissingOrBroken) {
    if (!modelsInstalled()) {
        GTEST_SKIP() << "no models in " << MORVANE_OCR_MODELS << "; run scripts/fetch-ocr-models";
    }
    const fs::path installed = MORVANE_OCR_MODELS;
    const std::string png = renderTextPng({400, 100}, {{"Start Game", {20, 30}, 36}});
    const auto copyModels = [&installed](const fs::path& to) {
        for (const char* file : {kDetectorFile, kRecogniserFile, kCharacterFile}) {
            fs::copy_file(installed / file, to / file);
        }
    };
    const struct {
        const char* what;
        std::function<void(const fs::path&)> prepare;
        const char* named;  // the file the log line must name
    } cases[] = {
        {"an empty folder", [](const fs::path&) {}, kDetectorFile},
        {"a cut detector",
         [&](const fs::path& to) {
             copyModels(to);
             fs::resize_file(to / kDetectorFile, fs::file_size(to / kDetectorFile) / 2);
         },
         "detector network"},
        {"the recogniser in the detector's place",
         [&](const fs::path& to) {
             copyModels(to);
             fs::copy_file(to / kRecogniserFile, to / kDetectorFile,
                           fs::copy_options::overwrite_existing);
         },
         "detector network"},
    };
    for (const auto& broken : cases) {
        SCOPED_TRACE(broken.what);
        const QTemporaryDir folder;
        const fs::path models = fs::path(folder.path().toStdString()) / "models";
        fs::create_directory(models);
        broken.prepare(models);
        const fs::path log = fs::path(folder.path().toStdString()) / "stderr.txt";
        const OcrServiceProcess service(MORVANE_OCR_PROGRAM, 2, models.string(), log.string());
        for (int request = 0; request < 2; ++request) {
            const ServiceAnswer answer = readServiceAnswer(service.detect(png));
            EXPECT_EQ(answer.engine, "fast");
            EXPECT_EQ(answer.lines(), std::vector<std::string>{"Start Game"});
        }
        const std::string errors = fileText(log);
        const std::string line = "accurate engine unavailable";
        EXPECT_NE(errors.find(line), std::string::npos) << errors;
        EXPECT_EQ(errors.find(line), errors.rfind(line)) << "logged more than once: " << errors;
        EXPECT_NE(errors.find(broken.named), std::string::npos) << errors;
    }
}

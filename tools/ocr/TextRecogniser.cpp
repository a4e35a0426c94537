#include "TextRecogniser.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <stdexcept>

#include "CjkSpacing.h"

namespace autoscene::ocr {

namespace {

struct TextDeleter {
    void operator()(char* text) const { delete[] text; }
};

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return std::string(text.substr(first, last - first + 1));
}

}  // namespace

TextRecogniser::TextRecogniser(const std::string& languages)
    : api_(std::make_unique<tesseract::TessBaseAPI>()) {
    if (api_->Init(nullptr, languages.c_str(), tesseract::OEM_LSTM_ONLY) != 0) {
        throw std::runtime_error("cannot load the Tesseract models for " + languages);
    }
    // Screens hold scattered labels rather than pages of prose.
    api_->SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
    // Keeps per-image diagnostics ("Estimating resolution as ...") out of the service's log.
    api_->SetVariable("debug_file", "/dev/null");
}

TextRecogniser::~TextRecogniser() {
    api_->End();
}

std::vector<TextLine> TextRecogniser::recognise(const cv::Mat& gray) {
    std::vector<TextLine> lines;
    if (gray.empty() || gray.type() != CV_8UC1) {
        return lines;
    }
    api_->SetImage(gray.data, gray.cols, gray.rows, 1, static_cast<int>(gray.step));
    if (api_->Recognize(nullptr) == 0) {
        const std::unique_ptr<tesseract::ResultIterator> line(api_->GetIterator());
        constexpr auto level = tesseract::RIL_TEXTLINE;
        if (line && !line->Empty(level)) {
            do {
                const std::unique_ptr<char, TextDeleter> raw(line->GetUTF8Text(level));
                TextLine found;
                found.text = removeSpacesBetweenCjk(trimmed(raw ? raw.get() : ""));
                int left = 0;
                int top = 0;
                int right = 0;
                int bottom = 0;
                if (!found.text.empty() && line->BoundingBox(level, &left, &top, &right, &bottom)) {
                    found.x = left;
                    found.y = top;
                    found.width = right - left;
                    found.height = bottom - top;
                    lines.push_back(std::move(found));
                }
            } while (line->Next(level));
        }
    }
    api_->Clear();
    return lines;
}

}  // namespace autoscene::ocr

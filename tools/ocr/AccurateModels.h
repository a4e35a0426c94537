#pragma once
// The accurate engine's model files, read and checked once at start-up; every worker
// builds its own networks from these bytes.

#include <filesystem>
#include <string>
#include <vector>

namespace autoscene::ocr {

inline constexpr const char* kDetectorFile = "ch_PP-OCRv4_det.onnx";
inline constexpr const char* kRecogniserFile = "ch_PP-OCRv4_rec.onnx";
inline constexpr const char* kCharacterFile = "ppocr_keys_v1.txt";
// The recogniser's classes: the CTC blank, the characters, a space.
inline constexpr int kCharacterCount = 6623;

struct AccurateModels {
    std::vector<unsigned char> detector;    // ONNX bytes
    std::vector<unsigned char> recogniser;  // ONNX bytes
    std::vector<std::string> characters;    // kCharacterCount UTF-8 characters
};

// Reads the three files from `folder`; throws std::runtime_error naming the file and
// what is wrong with it (missing, too large, not kCharacterCount lines of UTF-8).
AccurateModels readAccurateModels(const std::filesystem::path& folder);

// The folder beside the running program where scripts/fetch-ocr-models' files go.
std::filesystem::path defaultModelFolder();

}  // namespace autoscene::ocr

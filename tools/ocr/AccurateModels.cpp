#include "AccurateModels.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "system/Utf8.h"

namespace autoscene::ocr {

namespace {

// The shipped graphs are 5 and 11 MB; anything far larger is not one of them.
constexpr std::uintmax_t kMaxModelBytes = 64u * 1024u * 1024u;
constexpr std::uintmax_t kMaxCharacterFileBytes = 1024u * 1024u;

std::vector<unsigned char> readFile(const std::filesystem::path& path, std::uintmax_t maxBytes) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) {
        throw std::runtime_error(path.string() + ": " + error.message());
    }
    if (size == 0 || size > maxBytes) {
        throw std::runtime_error(path.string() + ": " + std::to_string(size) +
                                 " bytes, expected 1 to " + std::to_string(maxBytes));
    }
    std::ifstream in(path, std::ios::binary);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    if (!in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size))) {
        throw std::runtime_error(path.string() + ": cannot be read");
    }
    return bytes;
}

bool isOneCharacter(const std::string& line) {
    if (line.empty()) {
        return false;
    }
    const sys::CodePoint first = sys::decodeUtf8At(line, 0);
    return first.valid && first.bytes.size() == line.size();
}

std::vector<std::string> readCharacters(const std::filesystem::path& path) {
    const std::vector<unsigned char> bytes = readFile(path, kMaxCharacterFileBytes);
    std::vector<std::string> characters;
    std::string line;
    for (const unsigned char byte : bytes) {
        if (byte == '\n') {
            characters.push_back(std::move(line));
            line.clear();
        } else {
            line.push_back(static_cast<char>(byte));
        }
    }
    if (!line.empty()) {
        characters.push_back(std::move(line));
    }
    if (characters.size() != static_cast<std::size_t>(kCharacterCount)) {
        throw std::runtime_error(path.string() + ": " + std::to_string(characters.size()) +
                                 " lines, expected " + std::to_string(kCharacterCount));
    }
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (!isOneCharacter(characters[i])) {
            throw std::runtime_error(path.string() + ": line " + std::to_string(i + 1) +
                                     " is not one UTF-8 character");
        }
    }
    return characters;
}

}  // namespace

AccurateModels readAccurateModels(const std::filesystem::path& folder) {
    AccurateModels models;
    models.detector = readFile(folder / kDetectorFile, kMaxModelBytes);
    models.recogniser = readFile(folder / kRecogniserFile, kMaxModelBytes);
    models.characters = readCharacters(folder / kCharacterFile);
    return models;
}

std::filesystem::path defaultModelFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (error ? std::filesystem::current_path() : program.parent_path()) / "ocr-models";
}

}  // namespace autoscene::ocr

#include "system/CommandLine.h"

namespace autoscene::sys {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

}  // namespace

std::optional<std::vector<std::string>> splitCommandLine(const std::string& commandLine) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    std::size_t i = 0;
    while (i < commandLine.size()) {
        const char c = commandLine[i];
        if (isBlank(c)) {
            if (inWord) {
                words.push_back(std::move(word));
                word.clear();
                inWord = false;
            }
            ++i;
            continue;
        }
        inWord = true;
        if (c == '\\') {
            if (i + 1 >= commandLine.size()) {
                return std::nullopt;
            }
            word += commandLine[i + 1];
            i += 2;
        } else if (c == '\'') {
            const std::size_t close = commandLine.find('\'', i + 1);
            if (close == std::string::npos) {
                return std::nullopt;
            }
            word.append(commandLine, i + 1, close - i - 1);
            i = close + 1;
        } else if (c == '"') {
            ++i;
            bool closed = false;
            while (i < commandLine.size() && !closed) {
                const char q = commandLine[i];
                if (q == '"') {
                    closed = true;
                } else if (q == '\\' && i + 1 < commandLine.size() &&
                           (commandLine[i + 1] == '"' || commandLine[i + 1] == '\\')) {
                    word += commandLine[++i];
                } else {
                    word += q;
                }
                ++i;
            }
            if (!closed) {
                return std::nullopt;
            }
        } else {
            word += c;
            ++i;
        }
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return words;
}

}  // namespace autoscene::sys

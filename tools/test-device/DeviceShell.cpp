#include "DeviceShell.h"

#include <algorithm>
#include <cstring>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace autoscene::testdevice {

namespace {

constexpr std::uint32_t kSrgb = 1;

int toInt(const std::string& text) {
    return std::atoi(text.c_str());
}

void putU32(std::string& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(char((value >> shift) & 0xff));
    }
}

// Statements of a command line, split at ';' and "&&" outside quotes and escapes; the bool says
// whether the statement runs only after the one before succeeded.
std::vector<std::pair<std::string, bool>> splitStatements(const std::string& line) {
    std::vector<std::pair<std::string, bool>> statements;
    std::string current;
    bool afterAnd = false;
    char quote = 0;
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '\\' && quote != '\'' && i + 1 < line.size()) {
            current += line.substr(i, 2);  // an escaped character, kept for the word split
            ++i;
            continue;
        }
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == ';' || (c == '&' && i + 1 < line.size() && line[i + 1] == '&')) {
            statements.emplace_back(current, afterAnd);
            current.clear();
            afterAnd = c == '&';
            i += c == '&' ? 1 : 0;
            continue;
        }
        current.push_back(c);
    }
    statements.emplace_back(current, afterAnd);
    return statements;
}

// `input text` types "%s" as a blank.
std::string decodeInputText(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "%s") == 0) {
            out.push_back(' ');
            ++i;
        } else {
            out.push_back(text[i]);
        }
    }
    return out;
}

}  // namespace

std::optional<std::vector<std::string>> splitWords(const std::string& statement) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    for (size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (c == ' ' || c == '\t' || c == '\n') {
            if (inWord) {
                words.push_back(word);
                word.clear();
            }
            inWord = false;
            continue;
        }
        inWord = true;
        if (c == '\'') {
            const size_t end = statement.find('\'', i + 1);
            if (end == std::string::npos) {
                return std::nullopt;
            }
            word += statement.substr(i + 1, end - i - 1);
            i = end;
        } else if (c == '"') {
            size_t j = i + 1;
            for (; j < statement.size() && statement[j] != '"'; ++j) {
                if (statement[j] == '\\' && j + 1 < statement.size() &&
                    std::strchr("\"\\$`", statement[j + 1]) != nullptr) {
                    ++j;
                }
                word.push_back(statement[j]);
            }
            if (j >= statement.size()) {
                return std::nullopt;
            }
            i = j;
        } else if (c == '\\' && i + 1 < statement.size()) {
            word.push_back(statement[++i]);
        } else {
            word.push_back(c);
        }
    }
    if (inWord) {
        words.push_back(word);
    }
    return words;
}

DeviceShell::DeviceShell(const DeviceConfig& config, EventLog& log)
    : config_(config), log_(log), screen_(config.width, config.height, config.textured, log) {}

std::string DeviceShell::run(const std::string& commandLine) {
    const std::lock_guard lock(mutex_);
    std::string output;
    bool ok = true;
    for (const auto& [statement, afterAnd] : splitStatements(commandLine)) {
        if (afterAnd && !ok) {
            continue;
        }
        const auto words = splitWords(statement);
        if (!words) {
            return output + "/system/bin/sh: syntax error: unterminated quoted string\n";
        }
        ok = true;
        if (!words->empty()) {
            output += runStatement(*words, ok);
        }
    }
    return output;
}

cv::Mat DeviceShell::render() {
    const std::lock_guard lock(mutex_);
    return screen_.render();
}

void DeviceShell::withScreen(const std::function<void(AppScreen&)>& use) {
    const std::lock_guard lock(mutex_);
    use(screen_);
}

std::string DeviceShell::runStatement(const std::vector<std::string>& words, bool& ok) {
    const std::string& command = words[0];
    if (command == "wm") {
        return wm(words);
    }
    if (command == "screencap") {
        return screencap(words);
    }
    if (command == "input") {
        return input(words, ok);
    }
    if (command == "settings") {
        return settings(words);
    }
    if (command == "ime") {
        return ime(words);
    }
    if (command == "am") {
        return am(words, ok);
    }
    if (command == "monkey") {
        return monkey(words, ok);
    }
    if (command == "pm" && words.size() >= 3 && words[1] == "list" && words[2] == "packages") {
        return std::string("package:") + kAppPackage + "\n";
    }
    if (command == "getprop") {
        return words.size() > 1 && words[1] == "ro.build.version.sdk" ? "33\n" : "\n";
    }
    if (command == "echo") {
        std::string line;
        for (size_t i = 1; i < words.size(); ++i) {
            line += (i > 1 ? " " : "") + words[i];
        }
        return line + "\n";
    }
    if (command == "pkill" && words.size() == 2 && words[1] == "app_process") {
        ok = killService_ && killService_();
        return {};
    }
    if (command == "export" || command == "true") {
        return {};
    }
    ok = false;
    return "/system/bin/sh: " + command + ": inaccessible or not found\n";
}

std::string DeviceShell::wm(const std::vector<std::string>& words) {
    const bool size = words.size() > 1 && words[1] == "size";
    const bool density = words.size() > 1 && words[1] == "density";
    if (!size && !density) {
        return "usage: wm [size|density] [reset|VALUE]\n";
    }
    if (words.size() > 2) {
        if (size) {
            overrideSize_ = words[2] == "reset" ? std::string() : words[2];
        } else {
            overrideDensity_ = words[2] == "reset" ? 0 : toInt(words[2]);
        }
        log_.write("wm " + words[1] + " " + words[2]);
        return {};
    }
    if (size) {
        std::string out = "Physical size: " + std::to_string(config_.width) + "x" +
                          std::to_string(config_.height) + "\n";
        return overrideSize_.empty() ? out : out + "Override size: " + overrideSize_ + "\n";
    }
    std::string out = "Physical density: " + std::to_string(config_.density) + "\n";
    return overrideDensity_ == 0
               ? out
               : out + "Override density: " + std::to_string(overrideDensity_) + "\n";
}

std::string DeviceShell::screencap(const std::vector<std::string>& words) {
    const cv::Mat rgba = screen_.render();
    if (std::find(words.begin(), words.end(), "-p") != words.end()) {
        cv::Mat bgra;
        cv::cvtColor(rgba, bgra, cv::COLOR_RGBA2BGRA);
        std::vector<unsigned char> png;
        cv::imencode(".png", bgra, png);
        return {png.begin(), png.end()};
    }
    std::string out;
    const size_t bodyBytes = rgba.total() * rgba.elemSize();
    out.reserve(config_.screencapHeaderBytes + bodyBytes);
    putU32(out, std::uint32_t(rgba.cols));
    putU32(out, std::uint32_t(rgba.rows));
    putU32(out, std::uint32_t(config_.rawFormat));
    if (config_.screencapHeaderBytes == 16) {
        putU32(out, kSrgb);
    }
    out.append(reinterpret_cast<const char*>(rgba.data), bodyBytes);
    return out;
}

std::string DeviceShell::input(const std::vector<std::string>& words, bool& ok) {
    const std::string verb = words.size() > 1 ? words[1] : std::string();
    if (verb == "tap" && words.size() == 4) {
        screen_.tap(toInt(words[2]), toInt(words[3]));
    } else if (verb == "swipe" && (words.size() == 6 || words.size() == 7)) {
        const int durationMs = words.size() == 7 ? toInt(words[6]) : 300;
        const int x1 = toInt(words[2]);
        const int y1 = toInt(words[3]);
        const int x2 = toInt(words[4]);
        const int y2 = toInt(words[5]);
        // A swipe that does not move is how a host holds a tap for a given time.
        if (x1 == x2 && y1 == y2) {
            screen_.tap(x1, y1);
        } else {
            screen_.swipe(x1, y1, x2, y2, durationMs);
        }
    } else if (verb == "keyevent" && words.size() >= 3) {
        for (size_t i = 2; i < words.size(); ++i) {
            screen_.key(toInt(words[i]));
        }
    } else if (verb == "text" && words.size() == 3) {
        screen_.text(decodeInputText(words[2]));
    } else {
        ok = false;
        return "Usage: input [<source>] <command> [<arg>...]\n";
    }
    return {};
}

std::string DeviceShell::settings(const std::vector<std::string>& words) {
    const bool inputMethod =
        words.size() >= 4 && words[2] == "secure" && words[3] == "default_input_method";
    if (inputMethod && words[1] == "get") {
        return inputMethod_ + "\n";
    }
    if (inputMethod && words[1] == "put" && words.size() == 5) {
        inputMethod_ = words[4];
        log_.write("ime " + inputMethod_);
        return {};
    }
    return "null\n";
}

std::string DeviceShell::ime(const std::vector<std::string>& words) {
    const std::string verb = words.size() > 1 ? words[1] : std::string();
    if (verb == "enable" && words.size() == 3) {
        enabledInputMethods_.push_back(words[2]);
        return "Input method " + words[2] + ": now enabled\n";
    }
    if (verb == "set" && words.size() == 3) {
        inputMethod_ = words[2];
        log_.write("ime " + inputMethod_);
        return "Input method " + words[2] + " selected\n";
    }
    if (verb == "reset") {
        inputMethod_ = "com.android.inputmethod.latin/.LatinIME";
        enabledInputMethods_.clear();
        log_.write("ime reset");
        return "Reset current and enabled IMEs\n";
    }
    return "usage: ime [enable|set|reset] ID\n";
}

std::string DeviceShell::am(const std::vector<std::string>& words, bool& ok) {
    // am start [-n] PACKAGE/ACTIVITY
    const std::string component = words.size() > 2 && words[1] == "start" ? words.back() : "";
    const std::string package = component.substr(0, component.find('/'));
    if (!screen_.startApp(package)) {
        ok = false;
        return "Error: Activity not started, unable to resolve Intent { cmp=" + component + " }\n";
    }
    return "Starting: Intent { cmp=" + component + " }\n";
}

std::string DeviceShell::monkey(const std::vector<std::string>& words, bool& ok) {
    const auto p = std::find(words.begin(), words.end(), "-p");
    if (p == words.end() || p + 1 == words.end() || !screen_.startApp(*(p + 1))) {
        ok = false;
        return "** No activities found to run, monkey aborted.\n";
    }
    return "Events injected: 1\n";
}

}  // namespace autoscene::testdevice

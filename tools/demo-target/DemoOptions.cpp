#include "DemoOptions.h"

#include <charconv>

#include "DemoLayout.h"

namespace autoscene::demo {
namespace {

constexpr int kMaxSide = 8192;
constexpr int kMaxOffset = 16384;

// Reads an unsigned decimal number at `pos`; advances past it.
std::optional<int> readNumber(const std::string& text, std::size_t& pos, int limit) {
    int value = 0;
    const char* begin = text.data() + pos;
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || next == begin || *begin == '-' || *begin == '+' || value > limit) {
        return std::nullopt;
    }
    pos += static_cast<std::size_t>(next - begin);
    return value;
}

std::optional<int> readOffset(const std::string& text, std::size_t& pos) {
    if (pos >= text.size() || (text[pos] != '+' && text[pos] != '-')) {
        return std::nullopt;
    }
    const int sign = text[pos] == '-' ? -1 : 1;
    ++pos;
    const auto value = readNumber(text, pos, kMaxOffset);
    if (!value) {
        return std::nullopt;
    }
    return sign * *value;
}

std::optional<Screen> parseScreen(const std::string& text) {
    for (const Screen screen : {Screen::Start, Screen::Menu, Screen::Form, Screen::Finish}) {
        std::string name = screenName(screen);
        for (char& c : name) {
            c = static_cast<char>(c - 'A' + 'a');
        }
        if (text == name) {
            return screen;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Geometry> parseGeometry(const std::string& text) {
    std::size_t pos = 0;
    Geometry geometry;
    const auto width = readNumber(text, pos, kMaxSide);
    if (!width || *width == 0 || pos >= text.size() || text[pos] != 'x') {
        return std::nullopt;
    }
    ++pos;
    const auto height = readNumber(text, pos, kMaxSide);
    if (!height || *height == 0) {
        return std::nullopt;
    }
    geometry.width = *width;
    geometry.height = *height;
    if (pos == text.size()) {
        return geometry;
    }
    const auto x = readOffset(text, pos);
    const auto y = readOffset(text, pos);
    if (!x || !y || pos != text.size()) {
        return std::nullopt;
    }
    geometry.x = *x;
    geometry.y = *y;
    return geometry;
}

std::optional<DemoOptions> parseOptions(const std::vector<std::string>& arguments,
                                        std::string& error) {
    DemoOptions options;
    options.geometry = Geometry{kDefaultWidth, kDefaultHeight, 0, 0};
    options.title = kDefaultTitle;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--help" || name == "-h") {
            options.help = true;
            continue;
        }
        if (name != "--geometry" && name != "--title" && name != "--log" && name != "--screen") {
            error = "unknown argument: " + name;
            return std::nullopt;
        }
        if (i + 1 >= arguments.size()) {
            error = name + " needs a value";
            return std::nullopt;
        }
        const std::string& value = arguments[++i];
        if (name == "--geometry") {
            const auto geometry = parseGeometry(value);
            if (!geometry) {
                error = "bad geometry (want WxH or WxH+X+Y): " + value;
                return std::nullopt;
            }
            options.geometry = *geometry;
        } else if (name == "--title") {
            options.title = value;
        } else if (name == "--screen") {
            const auto screen = parseScreen(value);
            if (!screen) {
                error = "unknown screen (want start, menu, form or finish): " + value;
                return std::nullopt;
            }
            options.screen = *screen;
        } else {
            options.logPath = value;
        }
    }
    return options;
}

}  // namespace autoscene::demo

#include "DemoApp.h"

#include <algorithm>
#include <bit>

namespace autoscene::demo {
namespace {

constexpr Rgb kLabelColor = 0xFFFFFF;
constexpr Rgb kDarkLabelColor = 0x000000;

Rgb background(Screen screen) {
    switch (screen) {
        case Screen::Start:
            return kStartBackground;
        case Screen::Menu:
            return kMenuBackground;
        case Screen::Form:
            return kFormBackground;
        case Screen::Finish:
            return kFinishBackground;
    }
    return 0;
}

// The field shows ASCII as typed and anything else as '?': the core font has no other
// glyphs, and the log carries the exact text.
std::string printable(const std::string& utf8) {
    std::string shown;
    for (unsigned char byte : utf8) {
        if (byte < 0x80) {
            shown.push_back(static_cast<char>(byte));
        } else if ((byte & 0xC0) != 0x80) {
            shown.push_back('?');
        }
    }
    return shown;
}

}  // namespace

unsigned long DemoApp::pixel(Rgb color) const {
    const Visual* visual = DefaultVisual(display_, DefaultScreen(display_));
    const auto scale = [&color](int shift, unsigned long mask) {
        // The channel's top bits, placed where the visual keeps them.
        const unsigned long value = (color >> shift) & 0xFF;
        const int bits = std::popcount(mask);
        const int low = std::countr_zero(mask);
        return bits == 0 ? 0 : ((value >> (8 - std::min(bits, 8))) << low) & mask;
    };
    return scale(16, visual->red_mask) | scale(8, visual->green_mask) | scale(0, visual->blue_mask);
}

void DemoApp::fill(Window window, Box box, Rgb color) {
    XSetForeground(display_, gc_, pixel(color));
    XFillRectangle(display_, window, gc_, box.x, box.y, static_cast<unsigned>(box.width),
                   static_cast<unsigned>(box.height));
}

void DemoApp::label(Window window, int x, int y, const std::string& text, Rgb color) {
    XSetForeground(display_, gc_, pixel(color));
    XDrawString(display_, window, gc_, x, y, text.c_str(), static_cast<int>(text.size()));
}

void DemoApp::drawScreen() {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display_, main_, &attributes);
    fill(main_, Box{0, 0, attributes.width, attributes.height}, background(screen_));
    label(main_, 20, 40, screenName(screen_), kLabelColor);
    switch (screen_) {
        case Screen::Start:
            fill(main_, kStartButton, kStartButtonColor);
            label(main_, kStartButton.x + 80, kStartButton.centerY() + 5, "START", kDarkLabelColor);
            break;
        case Screen::Menu:
            for (int i = 0; i < kChoiceCount; ++i) {
                fill(main_, kChoices[i], kChoiceColors[i]);
                label(main_, kChoices[i].x + 10, kChoices[i].y + 20, kChoiceNames[i],
                      kDarkLabelColor);
            }
            break;
        case Screen::Form: {
            fill(main_, kTextField, kTextFieldColor);
            label(main_, kTextField.x + 8, kTextField.centerY() + 5, printable(fieldText_),
                  kDarkLabelColor);
            fill(main_, kSliderTrack, kSliderTrackColor);
            fill(main_, sliderKnob(sliderValue_), kSliderKnobColor);
            fill(main_, kNextButton, nextEnabled() ? kNextEnabledColor : kNextDisabledColor);
            label(main_, kNextButton.x + 56, kNextButton.centerY() + 5, "NEXT", kDarkLabelColor);
            if (choice_ >= 0) {
                label(main_, 20, 80, std::string("choice ") + kChoiceNames[choice_], kLabelColor);
            }
            break;
        }
        case Screen::Finish:
            fill(main_, kFinishBadge, kFinishBadgeColor);
            label(main_, kFinishBadge.x + 180, kFinishBadge.centerY() + 5, "DONE", kDarkLabelColor);
            break;
    }
    fill(panel_, Box{0, 0, kPanel.width, kPanel.height}, kPanelColor);
    label(panel_, 10, 20, "PANEL", kDarkLabelColor);
    // Drawn on the server before the log says so: tests capture as soon as they read it.
    XSync(display_, False);
}

}  // namespace autoscene::demo

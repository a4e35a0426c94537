#pragma once
// Every place and colour the demo target draws, in window coordinates. Shapes are solid and
// far apart so that captures can be checked pixel by pixel and found by image matching.

#include <cstdint>

namespace autoscene::demo {

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    constexpr bool contains(int px, int py) const {
        return px >= x && px < x + width && py >= y && py < y + height;
    }
    constexpr int centerX() const { return x + width / 2; }
    constexpr int centerY() const { return y + height / 2; }
};

// 0xRRGGBB
using Rgb = std::uint32_t;

enum class Screen { Start, Menu, Form, Finish };

// As drawn in the top-left corner and written to the log.
constexpr const char* screenName(Screen screen) {
    switch (screen) {
        case Screen::Start:
            return "START";
        case Screen::Menu:
            return "MENU";
        case Screen::Form:
            return "FORM";
        case Screen::Finish:
            return "FINISH";
    }
    return "";
}

inline constexpr int kDefaultWidth = 640;
inline constexpr int kDefaultHeight = 480;
inline constexpr const char* kDefaultTitle = "Autoscene Demo";
inline constexpr const char* kInstanceName = "autoscene-demo-target";
inline constexpr const char* kClassName = "AutosceneDemo";
inline constexpr const char* kPanelTitle = "demo-panel";
inline constexpr const char* kPanelClassName = "AutosceneDemoPanel";

// The child window, present on every screen.
inline constexpr Box kPanel{440, 20, 180, 60};
inline constexpr Rgb kPanelColor = 0x00A0A0;

inline constexpr Rgb kStartBackground = 0x203060;
inline constexpr Rgb kMenuBackground = 0x305020;
inline constexpr Rgb kFormBackground = 0x404040;
inline constexpr Rgb kFinishBackground = 0x602060;

inline constexpr Box kStartButton{220, 200, 200, 80};
inline constexpr Rgb kStartButtonColor = 0x00C000;

inline constexpr int kChoiceCount = 3;
inline constexpr Box kChoices[kChoiceCount] = {
    {60, 150, 150, 100}, {245, 150, 150, 100}, {430, 150, 150, 100}};
inline constexpr Rgb kChoiceColors[kChoiceCount] = {0xE03030, 0x3060E0, 0xE0C020};
inline constexpr const char* kChoiceNames[kChoiceCount] = {"RED", "BLUE", "GOLD"};

inline constexpr Box kTextField{40, 120, 400, 40};
inline constexpr Rgb kTextFieldColor = 0xFFFFFF;
inline constexpr Box kSliderTrack{40, 220, 400, 20};
inline constexpr Rgb kSliderTrackColor = 0x808080;
inline constexpr int kSliderKnobWidth = 20;
inline constexpr int kSliderKnobHeight = 40;
inline constexpr Rgb kSliderKnobColor = 0xFF8000;
inline constexpr int kSliderMax = 100;
inline constexpr int kWheelStep = 10;  // slider units per wheel click
inline constexpr Box kNextButton{460, 300, 140, 60};
inline constexpr Rgb kNextEnabledColor = 0x00C000;
inline constexpr Rgb kNextDisabledColor = 0x606060;

inline constexpr Box kFinishBadge{120, 140, 400, 200};
inline constexpr Rgb kFinishBadgeColor = 0xFFD700;

// The slider knob for a value in 0..kSliderMax: its centre runs along the track.
constexpr Box sliderKnob(int value) {
    const int centerX = kSliderTrack.x + kSliderTrack.width * value / kSliderMax;
    return Box{centerX - kSliderKnobWidth / 2, kSliderTrack.centerY() - kSliderKnobHeight / 2,
               kSliderKnobWidth, kSliderKnobHeight};
}

}  // namespace autoscene::demo

#pragma once
// The demo target's window, its screens and its reactions to input.

#include <X11/Xlib.h>

#include <string>

#include "DemoLayout.h"
#include "DemoOptions.h"
#include "EventLog.h"

namespace autoscene::demo {

class DemoApp {
public:
    DemoApp(Display* display, const DemoOptions& options, EventLog& log);
    ~DemoApp();
    DemoApp(const DemoApp&) = delete;
    DemoApp& operator=(const DemoApp&) = delete;

    // Handles events until the window is closed or destroyed.
    void run();

private:
    void createWindows(const DemoOptions& options);
    void setNames(Window window, const std::string& title, const char* instance,
                  const char* className);
    void handle(const XEvent& event);
    void logEvent(const XEvent& event);
    void onButtonPress(int x, int y, unsigned int button);
    void onMotion(int x, int y);
    void onButtonRelease();
    void onKey(KeySym keysym, const std::string& text);
    void show(Screen screen);
    void setSlider(int value);
    bool nextEnabled() const;

    // DemoDrawing.cpp
    // The pixel value of a colour on the default TrueColor visual, whatever its depth.
    unsigned long pixel(Rgb color) const;
    void drawScreen();
    void fill(Window window, Box box, Rgb color);
    void label(Window window, int x, int y, const std::string& text, Rgb color);

    Display* display_ = nullptr;
    EventLog& log_;
    Window main_ = None;
    Window panel_ = None;
    GC gc_ = nullptr;
    XFontStruct* font_ = nullptr;
    Atom deleteWindow_ = None;
    bool running_ = true;
    bool readyLogged_ = false;

    Screen screen_ = Screen::Start;
    int choice_ = -1;
    std::string fieldText_;
    int sliderValue_ = 0;
    bool dragging_ = false;
};

}  // namespace autoscene::demo

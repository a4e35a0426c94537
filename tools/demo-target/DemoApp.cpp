#include "DemoApp.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "system/Utf8.h"

namespace autoscene::demo {
namespace {

constexpr unsigned int kWheelUp = 4;
constexpr unsigned int kWheelDown = 5;

std::string hex(unsigned long value) {
    char buffer[32] = {};
    std::snprintf(buffer, sizeof buffer, "0x%lx", value);
    return buffer;
}

// The character a keysym types: Latin-1 keysyms are their code points, Unicode keysyms
// carry theirs; function keys type nothing.
std::string textOf(KeySym keysym) {
    std::string text;
    if ((keysym >= 0x20 && keysym <= 0x7E) || (keysym >= 0xA0 && keysym <= 0xFF)) {
        sys::appendUtf8(text, static_cast<char32_t>(keysym));
    } else if (keysym >= 0x01000100 && keysym <= 0x0110FFFF) {
        sys::appendUtf8(text, static_cast<char32_t>(keysym - 0x01000000));
    }
    return text;
}

void eraseLastCharacter(std::string& utf8) {
    while (!utf8.empty()) {
        const auto byte = static_cast<unsigned char>(utf8.back());
        utf8.pop_back();
        if ((byte & 0xC0) != 0x80) {
            break;
        }
    }
}

const char* eventName(int type) {
    switch (type) {
        case ButtonPress:
            return "ButtonPress";
        case ButtonRelease:
            return "ButtonRelease";
        case MotionNotify:
            return "MotionNotify";
        case KeyPress:
            return "KeyPress";
        case KeyRelease:
            return "KeyRelease";
        default:
            return nullptr;
    }
}

}  // namespace

DemoApp::DemoApp(Display* display, const DemoOptions& options, EventLog& log)
    : display_(display), log_(log), screen_(options.screen) {
    createWindows(options);
}

DemoApp::~DemoApp() {
    if (font_ != nullptr) {
        XFreeFont(display_, font_);
    }
    if (gc_ != nullptr) {
        XFreeGC(display_, gc_);
    }
}

void DemoApp::createWindows(const DemoOptions& options) {
    const int screen = DefaultScreen(display_);
    const Geometry& g = options.geometry;
    main_ = XCreateSimpleWindow(display_, RootWindow(display_, screen), g.x, g.y,
                                static_cast<unsigned>(g.width), static_cast<unsigned>(g.height), 0,
                                0, pixel(kStartBackground));
    panel_ = XCreateSimpleWindow(display_, main_, kPanel.x, kPanel.y,
                                 static_cast<unsigned>(kPanel.width),
                                 static_cast<unsigned>(kPanel.height), 0, 0, pixel(kPanelColor));
    setNames(main_, options.title, kInstanceName, kClassName);
    setNames(panel_, kPanelTitle, kPanelTitle, kPanelClassName);

    XSizeHints hints{};
    hints.flags = USPosition | USSize;
    hints.x = g.x;
    hints.y = g.y;
    hints.width = g.width;
    hints.height = g.height;
    XSetWMNormalHints(display_, main_, &hints);
    const long pid = getpid();
    XChangeProperty(display_, main_, XInternAtom(display_, "_NET_WM_PID", False), XA_CARDINAL, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(&pid), 1);
    deleteWindow_ = XInternAtom(display_, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display_, main_, &deleteWindow_, 1);

    const long pointerMask = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
    XSelectInput(display_, main_,
                 ExposureMask | StructureNotifyMask | KeyPressMask | KeyReleaseMask | pointerMask);
    XSelectInput(display_, panel_, ExposureMask | pointerMask);

    gc_ = XCreateGC(display_, main_, 0, nullptr);
    font_ = XLoadQueryFont(display_, "fixed");
    if (font_ != nullptr) {
        XSetFont(display_, gc_, font_->fid);
    }
    XMapWindow(display_, panel_);
    XMapWindow(display_, main_);
}

void DemoApp::setNames(Window window, const std::string& title, const char* instance,
                       const char* className) {
    XStoreName(display_, window, title.c_str());
    XChangeProperty(display_, window, XInternAtom(display_, "_NET_WM_NAME", False),
                    XInternAtom(display_, "UTF8_STRING", False), 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(title.data()),
                    static_cast<int>(title.size()));
    XClassHint hint{};
    hint.res_name = const_cast<char*>(instance);
    hint.res_class = const_cast<char*>(className);
    XSetClassHint(display_, window, &hint);
}

void DemoApp::run() {
    while (running_) {
        XEvent event{};
        XNextEvent(display_, &event);
        handle(event);
    }
}

void DemoApp::handle(const XEvent& event) {
    logEvent(event);
    switch (event.type) {
        case Expose:
            if (event.xexpose.count == 0) {
                drawScreen();
                if (!readyLogged_ && event.xexpose.window == main_) {
                    readyLogged_ = true;
                    log_.write("ready window=" + hex(main_) + " panel=" + hex(panel_));
                }
            }
            break;
        case ButtonPress:
            if (event.xbutton.window == main_) {
                onButtonPress(event.xbutton.x, event.xbutton.y, event.xbutton.button);
            }
            break;
        case MotionNotify:
            if (event.xmotion.window == main_) {
                onMotion(event.xmotion.x, event.xmotion.y);
            }
            break;
        case ButtonRelease:
            if (event.xbutton.window == main_ && event.xbutton.button == Button1) {
                onButtonRelease();
            }
            break;
        case KeyPress: {
            XKeyEvent copy = event.xkey;
            KeySym keysym = NoSymbol;
            char ignored[8] = {};
            XLookupString(&copy, ignored, sizeof ignored, &keysym, nullptr);
            onKey(keysym, textOf(keysym));
            break;
        }
        case MappingNotify: {
            XMappingEvent copy = event.xmapping;
            XRefreshKeyboardMapping(&copy);
            break;
        }
        case ClientMessage:
            if (static_cast<Atom>(event.xclient.data.l[0]) == deleteWindow_) {
                running_ = false;
            }
            break;
        case DestroyNotify:
            running_ = event.xdestroywindow.window != main_;
            break;
        default:
            break;
    }
}

void DemoApp::logEvent(const XEvent& event) {
    const char* name = eventName(event.type);
    if (name == nullptr) {
        return;
    }
    const Window window = event.xany.window;
    std::string line = std::string(window == panel_ ? "panel " : "main ") + name +
                       " send=" + (event.xany.send_event ? "1" : "0");
    if (event.type == KeyPress || event.type == KeyRelease) {
        XKeyEvent copy = event.xkey;
        KeySym keysym = NoSymbol;
        char ignored[8] = {};
        XLookupString(&copy, ignored, sizeof ignored, &keysym, nullptr);
        const char* keysymName = XKeysymToString(keysym);
        line += " keycode=" + std::to_string(event.xkey.keycode) +
                " keysym=" + (keysymName != nullptr ? keysymName : hex(keysym)) +
                " state=" + std::to_string(event.xkey.state) + " text=" + textOf(keysym);
    } else {
        // Button and motion events share the fields logged here.
        const XButtonEvent& button = event.xbutton;
        line += " button=" + std::to_string(event.type == MotionNotify ? 0 : button.button) +
                " x=" + std::to_string(button.x) + " y=" + std::to_string(button.y) +
                " state=" + std::to_string(button.state);
    }
    log_.write(line);
}

void DemoApp::onButtonPress(int x, int y, unsigned int button) {
    if (button == kWheelUp || button == kWheelDown) {
        if (screen_ == Screen::Form) {
            setSlider(sliderValue_ + (button == kWheelUp ? kWheelStep : -kWheelStep));
        }
        return;
    }
    if (button != Button1) {
        return;
    }
    switch (screen_) {
        case Screen::Start:
            if (kStartButton.contains(x, y)) {
                show(Screen::Menu);
            }
            break;
        case Screen::Menu:
            for (int i = 0; i < kChoiceCount; ++i) {
                if (kChoices[i].contains(x, y)) {
                    choice_ = i;
                    log_.write(std::string("choice ") + kChoiceNames[i]);
                    show(Screen::Form);
                }
            }
            break;
        case Screen::Form: {
            const Box grip{kSliderTrack.x - kSliderKnobWidth, sliderKnob(0).y,
                           kSliderTrack.width + 2 * kSliderKnobWidth, kSliderKnobHeight};
            if (grip.contains(x, y)) {
                dragging_ = true;
                onMotion(x, y);
            } else if (kNextButton.contains(x, y) && nextEnabled()) {
                show(Screen::Finish);
            }
            break;
        }
        case Screen::Finish:
            if (kFinishBadge.contains(x, y)) {
                show(Screen::Start);
            }
            break;
    }
}

void DemoApp::onMotion(int x, int /*y*/) {
    if (dragging_) {
        setSlider((x - kSliderTrack.x) * kSliderMax / kSliderTrack.width);
    }
}

void DemoApp::onButtonRelease() {
    dragging_ = false;
}

void DemoApp::onKey(KeySym keysym, const std::string& text) {
    if (keysym == XK_Escape) {
        show(Screen::Start);
        return;
    }
    if (screen_ == Screen::Menu && keysym >= XK_1 && keysym < XK_1 + kChoiceCount) {
        choice_ = static_cast<int>(keysym - XK_1);
        log_.write(std::string("choice ") + kChoiceNames[choice_]);
        show(Screen::Form);
        return;
    }
    if (screen_ != Screen::Form) {
        return;
    }
    if (keysym == XK_Return) {
        if (nextEnabled()) {
            show(Screen::Finish);
        }
        return;
    }
    if (keysym == XK_BackSpace) {
        eraseLastCharacter(fieldText_);
    } else if (!text.empty()) {
        fieldText_ += text;
    } else {
        return;
    }
    drawScreen();
    log_.write("field " + fieldText_);
}

void DemoApp::show(Screen screen) {
    if (screen == Screen::Start) {
        choice_ = -1;
        fieldText_.clear();
        sliderValue_ = 0;
    }
    screen_ = screen;
    dragging_ = false;
    drawScreen();
    log_.write(std::string("screen ") + screenName(screen));
}

void DemoApp::setSlider(int value) {
    const int clamped = std::clamp(value, 0, kSliderMax);
    if (clamped == sliderValue_) {
        return;
    }
    sliderValue_ = clamped;
    drawScreen();
    log_.write("slider " + std::to_string(sliderValue_));
}

bool DemoApp::nextEnabled() const {
    return !fieldText_.empty() && sliderValue_ == kSliderMax;
}

}  // namespace autoscene::demo

#pragma once
// A library that stands in for the desktop back end's capture and input of window targets.
// Each service is used only when the plug-in offers it; the others stay with the back end.

#include <QString>

#include "desktop/DesktopBackend.h"

namespace autoscene::targets {

class IWindowPlugin {
public:
    virtual ~IWindowPlugin() = default;

    virtual void targetStarted(platform::WindowHandle window) = 0;
    virtual void targetEnded(platform::WindowHandle window) = 0;

    virtual bool capturesWindows() const = 0;
    // False, and `consume` not called, when the plug-in delivers no valid frame.
    virtual bool capture(platform::WindowHandle window, const platform::FrameConsumer& consume) = 0;

    virtual bool handlesMouse() const = 0;
    virtual void mouse(platform::WindowHandle window, platform::Point point, platform::MouseOp op,
                       int pressMs) = 0;
    virtual bool handlesWheel() const = 0;
    virtual void wheel(platform::WindowHandle window, int steps, platform::Point point) = 0;
    virtual bool handlesKeys() const = 0;
    virtual void key(platform::WindowHandle window, int virtualKey, platform::KeyOp op) = 0;
    virtual bool handlesText() const = 0;
    virtual void inputText(platform::WindowHandle window, const QString& text) = 0;
};

}  // namespace autoscene::targets

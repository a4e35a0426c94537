#pragma once
// A background plug-in: a library whose mv_ functions stand in for the capture and input of
// window targets, each service only when the task ticked it and the library exports it.

#include <QLibrary>
#include <QString>
#include <memory>
#include <string>

#include "plugins/include/autoscene_plugin.h"
#include "targets/WindowPlugin.h"

namespace autoscene::plugins {

struct BackgroundServices {
    bool capture = true;
    bool mouse = true;
    bool key = true;
    bool wheel = true;
    bool input = true;
};

// The services named in a task's enabled_plugin_func: a JSON list of the strings "capture",
// "mouse", "key", "input" and "wheel"; other entries are ignored.
BackgroundServices servicesFromJson(const std::string& jsonList);
// The enabled_plugin_func list of the ticked services.
std::string servicesToJson(const BackgroundServices& services);

// Largest width and height taken from mv_capture_info.
inline constexpr int kMaxCaptureSide = 16384;

class BackgroundPlugin : public targets::IWindowPlugin {
public:
    // Loads the library and calls mv_global_init; nothing (with the loader's error in
    // `error`) when it does not load.
    static std::unique_ptr<BackgroundPlugin> load(const QString& path, BackgroundServices services,
                                                  QString* error = nullptr);
    // mv_global_uninit, then the library is unloaded.
    ~BackgroundPlugin() override;
    BackgroundPlugin(const BackgroundPlugin&) = delete;
    BackgroundPlugin& operator=(const BackgroundPlugin&) = delete;

    void targetStarted(platform::WindowHandle window) override;
    void targetEnded(platform::WindowHandle window) override;

    bool capturesWindows() const override;
    bool capture(platform::WindowHandle window, const platform::FrameConsumer& consume) override;
    bool handlesMouse() const override;
    void mouse(platform::WindowHandle window, platform::Point point, platform::MouseOp op,
               int pressMs) override;
    bool handlesWheel() const override;
    void wheel(platform::WindowHandle window, int steps, platform::Point point) override;
    bool handlesKeys() const override;
    void key(platform::WindowHandle window, int virtualKey, platform::KeyOp op) override;
    bool handlesText() const override;
    void inputText(platform::WindowHandle window, const QString& text) override;

private:
    struct Exports {
        mv_global_init_function globalInit = nullptr;
        mv_init_function init = nullptr;
        mv_capture_function capture = nullptr;
        mv_capture_info_function captureInfo = nullptr;
        mv_mouse_down_function mouseDown = nullptr;
        mv_mouse_move_function mouseMove = nullptr;
        mv_mouse_up_function mouseUp = nullptr;
        mv_key_down_function keyDown = nullptr;
        mv_mouse_wheel_function mouseWheel = nullptr;
        mv_key_up_function keyUp = nullptr;
        mv_input_text_function inputText = nullptr;
        mv_uninit_function uninit = nullptr;
        mv_global_uninit_function globalUninit = nullptr;
    };

    BackgroundPlugin(std::unique_ptr<QLibrary> library, BackgroundServices services);

    std::unique_ptr<QLibrary> library_;
    const BackgroundServices services_;
    Exports exports_;
};

}  // namespace autoscene::plugins

#include "plugins/BackgroundPlugin.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <chrono>
#include <opencv2/imgproc.hpp>
#include <thread>
#include <vector>

#include "plugins/PluginLibrary.h"

namespace autoscene::plugins {

Q_LOGGING_CATEGORY(lcBackgroundPlugin, "autoscene.plugins.background")

namespace {

constexpr int kWheelDelta = 120;

template <class Function>
void resolveInto(QLibrary& library, const char* name, Function& out) {
    out = reinterpret_cast<Function>(library.resolve(name));
}

mv_handle handleOf(platform::WindowHandle window) {
    return mv_handle(window);
}

}  // namespace

BackgroundServices servicesFromJson(const std::string& jsonList) {
    BackgroundServices services{false, false, false, false, false};
    const QJsonArray list = QJsonDocument::fromJson(QByteArray::fromStdString(jsonList)).array();
    for (const auto& entry : list) {
        const QString name = entry.toString();
        services.capture = services.capture || name == QLatin1String("capture");
        services.mouse = services.mouse || name == QLatin1String("mouse");
        services.key = services.key || name == QLatin1String("key");
        services.wheel = services.wheel || name == QLatin1String("wheel");
        services.input = services.input || name == QLatin1String("input");
    }
    return services;
}

std::string servicesToJson(const BackgroundServices& services) {
    const std::pair<bool, const char*> named[] = {{services.capture, "capture"},
                                                  {services.mouse, "mouse"},
                                                  {services.key, "key"},
                                                  {services.input, "input"},
                                                  {services.wheel, "wheel"}};
    QJsonArray list;
    for (const auto& [ticked, name] : named) {
        if (ticked) {
            list.append(QString::fromLatin1(name));
        }
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact).toStdString();
}

std::unique_ptr<BackgroundPlugin> BackgroundPlugin::load(const QString& path,
                                                         BackgroundServices services,
                                                         QString* error) {
    auto library = loadPluginLibrary(path, error);
    if (!library) {
        return nullptr;
    }
    return std::unique_ptr<BackgroundPlugin>(new BackgroundPlugin(std::move(library), services));
}

BackgroundPlugin::BackgroundPlugin(std::unique_ptr<QLibrary> library, BackgroundServices services)
    : library_(std::move(library)), services_(services) {
    QLibrary& lib = *library_;
    resolveInto(lib, "mv_global_init", exports_.globalInit);
    resolveInto(lib, "mv_init", exports_.init);
    resolveInto(lib, "mv_capture", exports_.capture);
    resolveInto(lib, "mv_capture_info", exports_.captureInfo);
    resolveInto(lib, "mv_mouse_down", exports_.mouseDown);
    resolveInto(lib, "mv_mouse_move", exports_.mouseMove);
    resolveInto(lib, "mv_mouse_up", exports_.mouseUp);
    resolveInto(lib, "mv_key_down", exports_.keyDown);
    resolveInto(lib, "mv_mouse_wheel", exports_.mouseWheel);
    resolveInto(lib, "mv_key_up", exports_.keyUp);
    resolveInto(lib, "mv_input_text", exports_.inputText);
    resolveInto(lib, "mv_uninit", exports_.uninit);
    resolveInto(lib, "mv_global_uninit", exports_.globalUninit);
    if (exports_.globalInit) {
        exports_.globalInit();
    }
}

BackgroundPlugin::~BackgroundPlugin() {
    if (exports_.globalUninit) {
        exports_.globalUninit();
    }
    library_->unload();
}

void BackgroundPlugin::targetStarted(platform::WindowHandle window) {
    if (exports_.init) {
        exports_.init(handleOf(window));
    }
}

void BackgroundPlugin::targetEnded(platform::WindowHandle window) {
    if (exports_.uninit) {
        exports_.uninit(handleOf(window));
    }
}

bool BackgroundPlugin::capturesWindows() const {
    return services_.capture && exports_.captureInfo && exports_.capture;
}

bool BackgroundPlugin::capture(platform::WindowHandle window,
                               const platform::FrameConsumer& consume) {
    if (!capturesWindows()) {
        return false;
    }
    int width = 0;
    int height = 0;
    int channels = 0;
    if ((exports_.captureInfo(handleOf(window), &width, &height, &channels) & 0xFF) == 0 ||
        width < 1 || height < 1 || width > kMaxCaptureSide || height > kMaxCaptureSide) {
        return false;
    }
    if (channels != 3 && channels != 4) {
        qCWarning(lcBackgroundPlugin) << "capture with" << channels << "channels ignored";
        return false;
    }
    std::vector<unsigned char> pixels(size_t(width) * size_t(height) * size_t(channels));
    exports_.capture(handleOf(window), pixels.data(), int(pixels.size()));
    const cv::Mat source(height, width, CV_8UC(channels), pixels.data());
    cv::Mat bgra;
    cv::cvtColor(source, bgra, channels == 3 ? cv::COLOR_RGB2BGRA : cv::COLOR_RGBA2BGRA);
    consume(platform::BgraView{bgra.cols, bgra.rows, int(bgra.step), bgra.data});
    return true;
}

bool BackgroundPlugin::handlesMouse() const {
    return services_.mouse && exports_.mouseDown && exports_.mouseMove && exports_.mouseUp;
}

void BackgroundPlugin::mouse(platform::WindowHandle window, platform::Point point,
                             platform::MouseOp op, int pressMs) {
    if (!handlesMouse()) {
        return;
    }
    const mv_handle handle = handleOf(window);
    exports_.mouseMove(handle, point.x, point.y);
    const auto click = [&](int button) {
        exports_.mouseDown(handle, button, point.x, point.y);
        std::this_thread::sleep_for(std::chrono::milliseconds(pressMs));
        exports_.mouseUp(handle, button);
    };
    switch (op) {
        case platform::MouseOp::LeftClick:
            click(1);
            break;
        case platform::MouseOp::RightClick:
            click(2);
            break;
        case platform::MouseOp::LeftDown:
            exports_.mouseDown(handle, 1, point.x, point.y);
            break;
        case platform::MouseOp::LeftUp:
            exports_.mouseUp(handle, 1);
            break;
        case platform::MouseOp::RightDown:
            exports_.mouseDown(handle, 2, point.x, point.y);
            break;
        case platform::MouseOp::RightUp:
            exports_.mouseUp(handle, 2);
            break;
        default:
            break;
    }
}

bool BackgroundPlugin::handlesWheel() const {
    return services_.wheel && exports_.mouseWheel;
}

void BackgroundPlugin::wheel(platform::WindowHandle window, int steps, platform::Point point) {
    if (handlesWheel()) {
        exports_.mouseWheel(handleOf(window), steps * kWheelDelta, point.x, point.y);
    }
}

bool BackgroundPlugin::handlesKeys() const {
    return services_.key && exports_.keyDown && exports_.keyUp;
}

void BackgroundPlugin::key(platform::WindowHandle window, int virtualKey, platform::KeyOp op) {
    if (!handlesKeys()) {
        return;
    }
    if (op != platform::KeyOp::Up) {
        exports_.keyDown(handleOf(window), virtualKey);
    }
    if (op != platform::KeyOp::Down) {
        exports_.keyUp(handleOf(window), virtualKey);
    }
}

bool BackgroundPlugin::handlesText() const {
    return services_.input && exports_.inputText;
}

void BackgroundPlugin::inputText(platform::WindowHandle window, const QString& text) {
    if (!handlesText()) {
        return;
    }
    std::vector<mv_char16> units(text.utf16(), text.utf16() + text.size());
    units.push_back(0);
    exports_.inputText(handleOf(window), units.data());
}

}  // namespace autoscene::plugins

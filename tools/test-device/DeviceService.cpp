#include "DeviceService.h"

#include <regex>

namespace autoscene::testdevice {

namespace {

constexpr int kTap = -1;
constexpr int kDown = 0;
constexpr int kUp = 1;

int intParam(const httplib::Request& request, const char* name) {
    return request.has_param(name) ? std::atoi(request.get_param_value(name).c_str()) : 0;
}

}  // namespace

DeviceService::DeviceService(DeviceShell& shell, EventLog& log, int density)
    : shell_(shell), log_(log), density_(density) {
    route();
    port_ = server_.bind_to_any_port("127.0.0.1");
    if (port_ > 0) {
        thread_ = std::thread([this] {
            server_.listen_after_bind();
            ended_ = true;
        });
        log_.write("service started");
    }
}

DeviceService::~DeviceService() {
    stop();
}

void DeviceService::stop() {
    server_.stop();
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id()) {
        thread_.join();
    }
}

void DeviceService::wait() {
    while (port_ > 0 && !ended_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void DeviceService::route() {
    server_.Get("/request_image",
                [this](const httplib::Request& request, httplib::Response& response) {
                    if (request.has_param("immediately")) {
                        log_.write("fresh frame");
                    }
                    const cv::Mat rgba = shell_.render();
                    response.set_header("state", "1");
                    response.set_header("pixelStride", "4");
                    response.set_header("rowPadding", "0");
                    response.set_header("image-width", std::to_string(rgba.cols));
                    response.set_header("image-height", std::to_string(rgba.rows));
                    response.set_header("density", std::to_string(density_));
                    response.set_content(std::string(reinterpret_cast<const char*>(rgba.data),
                                                     rgba.total() * rgba.elemSize()),
                                         "application/octet-stream");
                });
    server_.Get("/touch", [this](const httplib::Request& request, httplib::Response& response) {
        const int x = intParam(request, "x");
        const int y = intParam(request, "y");
        const int action = intParam(request, "action");
        const std::lock_guard lock(touchMutex_);
        if (action == kTap) {
            shell_.withScreen([&](AppScreen& screen) { screen.tap(x, y); });
        } else if (action == kDown) {
            downX_ = x;
            downY_ = y;
        } else if (action == kUp && downX_ >= 0) {
            shell_.withScreen([&](AppScreen& screen) {
                if (downX_ == x && downY_ == y) {
                    screen.tap(x, y);
                } else {
                    screen.swipe(downX_, downY_, x, y, intParam(request, "duration"));
                }
            });
            downX_ = -1;
        }
        response.set_content("ok", "text/plain");
    });
    server_.Get("/key", [this](const httplib::Request& request, httplib::Response& response) {
        const int action = intParam(request, "action");
        if (action == kTap || action == kDown) {
            shell_.withScreen([&](AppScreen& screen) { screen.key(intParam(request, "key")); });
        }
        response.set_content("ok", "text/plain");
    });
    server_.Get("/input", [this](const httplib::Request& request, httplib::Response& response) {
        const std::string text = request.get_param_value("text");
        shell_.withScreen([&](AppScreen& screen) { screen.text(text); });
        response.set_content("ok", "text/plain");
    });
    server_.Post("/slide", [this](const httplib::Request& request, httplib::Response& response) {
        static const std::regex point(R"re(\{\s*"x"\s*:\s*(-?\d+)\s*,\s*"y"\s*:\s*(-?\d+)\s*\})re");
        static const std::regex slideTime(R"re("slideTime"\s*:\s*(\d+))re");
        std::vector<std::pair<int, int>> points;
        for (auto it = std::sregex_iterator(request.body.begin(), request.body.end(), point);
             it != std::sregex_iterator(); ++it) {
            points.emplace_back(std::stoi((*it)[1]), std::stoi((*it)[2]));
        }
        std::smatch time;
        std::regex_search(request.body, time, slideTime);
        if (points.size() < 2) {
            response.status = 400;
            response.set_content("need two points", "text/plain");
            return;
        }
        shell_.withScreen([&](AppScreen& screen) {
            screen.swipe(points.front().first, points.front().second, points.back().first,
                         points.back().second, time.empty() ? 0 : std::stoi(time[1]));
        });
        response.set_content("ok", "text/plain");
    });
    server_.Get("/app", [this](const httplib::Request& request, httplib::Response& response) {
        bool started = false;
        shell_.withScreen([&](AppScreen& screen) {
            started = screen.startApp(request.get_param_value("package_name"));
        });
        response.set_content(started ? "ok" : "no such package", "text/plain");
    });
}

std::shared_ptr<DeviceService> ServiceSlot::current() const {
    const std::lock_guard lock(mutex_);
    return service_;
}

void ServiceSlot::set(std::shared_ptr<DeviceService> service) {
    const std::lock_guard lock(mutex_);
    service_ = std::move(service);
}

bool ServiceSlot::kill() {
    std::shared_ptr<DeviceService> service;
    {
        const std::lock_guard lock(mutex_);
        service.swap(service_);
    }
    if (service) {
        service->stop();
    }
    return service != nullptr;
}

}  // namespace autoscene::testdevice

namespace autoscene::testdevice {

ServiceCommand::~ServiceCommand() {
    if (waiter_.joinable()) {
        if (waiter_.get_id() == std::this_thread::get_id()) {
            waiter_.detach();
        } else {
            closed();
            waiter_.join();
        }
    }
}

void ServiceCommand::opened(const StreamOutput& output) {
    if (!filePresent_) {
        output("Error: Could not find or load main class\n", true);
        return;
    }
    service_ = std::make_shared<DeviceService>(shell_, log_, density_);
    slot_.kill();  // one service per device, as its port allows
    slot_.set(service_);
    waiter_ = std::thread([this, self = shared_from_this(), output] {
        service_->wait();
        log_.write("service ended");
        output("service ended\n", true);
    });
}

void ServiceCommand::closed() {
    if (service_) {
        service_->stop();
    }
}

}  // namespace autoscene::testdevice

#pragma once
// A private 1280x720 Xvfb per test, the back end on it, and the test's own connection.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "DemoTargetProcess.h"
#include "ReferenceScreen.h"
#include "XvfbServer.h"
#include "x11/X11Backend.h"

namespace autoscene::testing {

inline constexpr int kScreenWidth = 1280;
inline constexpr int kScreenHeight = 720;

// Polls for up to three seconds: other programs react to the server in their own time.
inline bool eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 200; ++i) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(15));
    }
    return false;
}

class X11TestFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(server_.display().empty()) << "Xvfb did not start";
        backend_ =
            platform::makeX11Backend(server_.display().c_str(), [this](const std::string& line) {
                std::lock_guard lock(logMutex_);
                log_.push_back(line);
            });
        ASSERT_NE(backend_, nullptr);
        reference_ = std::make_unique<ReferenceScreen>(server_.display());
        ASSERT_NE(reference_->display(), nullptr);
    }

    std::unique_ptr<DemoTargetProcess> startDemo(const std::vector<std::string>& arguments) {
        auto demo = std::make_unique<DemoTargetProcess>(server_.display(), arguments);
        EXPECT_TRUE(demo->started()) << "the demo target did not draw its first screen";
        return demo;
    }

    std::vector<std::string> loggedLines() {
        std::lock_guard lock(logMutex_);
        return log_;
    }

    XvfbServer server_{kScreenWidth, kScreenHeight};
    std::mutex logMutex_;
    std::vector<std::string> log_;
    std::unique_ptr<platform::IDesktopBackend> backend_;
    std::unique_ptr<ReferenceScreen> reference_;
};

}  // namespace autoscene::testing

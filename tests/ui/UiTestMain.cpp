// Widget tests run on a private Xvfb with the real xcb platform, as a user's session would.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

#include "XvfbServer.h"

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS();
    }
    autoscene::testing::XvfbServer server(1280, 800);
    if (server.display().empty()) {
        fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    setenv("DISPLAY", server.display().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}

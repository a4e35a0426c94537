#include <gtest/gtest.h>

#include <QGuiApplication>

// The OCR corpus's frame is drawn with QPainter, which needs an application object.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

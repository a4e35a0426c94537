// The device part of listing targets, against test devices through the real adb.

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QThread>
#include <map>

#include "TestDevice.h"
#include "app/DeviceChoice.h"

using autoscene::app::printDeviceTargets;
using autoscene::platform::android::AdbClient;
using autoscene::testing::PrivateAdb;
using autoscene::testing::TestDevice;

namespace {

TEST(DeviceList, EveryDeviceWithItsState) {
    PrivateAdb adb;
    TestDevice ready;
    TestDevice gone;
    ASSERT_TRUE(adb.connect(ready));
    ASSERT_TRUE(adb.connect(gone));
    gone.kill();
    // adb notices the closed connection at once; give it a moment on a loaded machine.
    for (int i = 0; i < 50 && !adb.adb({"devices"}).contains("offline"); ++i) {
        QThread::msleep(50);
    }

    QString text;
    QString errors;
    QTextStream out(&text);
    QTextStream err(&errors);
    ASSERT_TRUE(printDeviceTargets(AdbClient("adb"), false, out, err));
    out.flush();
    EXPECT_TRUE(text.contains("device " + ready.serial() + " (device)\n")) << text.toStdString();

    QString json;
    QTextStream jsonOut(&json);
    ASSERT_TRUE(printDeviceTargets(AdbClient("adb"), true, jsonOut, err));
    jsonOut.flush();
    std::map<QString, QString> states;
    for (const QString& line : json.split('\n', Qt::SkipEmptyParts)) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        EXPECT_EQ(object["type"].toString(), "target");
        EXPECT_EQ(object["kind"].toString(), "device");
        states[object["serial"].toString()] = object["state"].toString();
    }
    EXPECT_EQ(states[ready.serial()], "device");
    EXPECT_EQ(states[gone.serial()], "offline");

    EXPECT_FALSE(printDeviceTargets(AdbClient("/nonexistent/adb"), false, out, err));
    err.flush();
    EXPECT_TRUE(errors.contains("adb is not available"));
}

}  // namespace

#include "base/windows/Look.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    velmora::ApplyLook(application, velmora::Shade::Light);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

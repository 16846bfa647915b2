// The start of a test program that has windows.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/anwendung.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(argc, argv);
    AnwendungEinrichten();
    return RUN_ALL_TESTS();
}

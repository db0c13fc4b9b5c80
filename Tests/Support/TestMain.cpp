#include "Foundation/Error.h"
#include "Foundation/Task.h"

#include <QGuiApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleMock(&argc, argv);
    QGuiApplication application(argc, argv);
    setUnhandledTaskErrorHandler([](std::exception_ptr error) {
        ADD_FAILURE() << "a task failed: " << localizedDescription(error).toStdString();
    });
    return RUN_ALL_TESTS();
}

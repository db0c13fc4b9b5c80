#include "Platform/Linux/X11/X11Application.h"

#include "Desktop/TestPrograms.h"
#include "Support/FakeDesktopLook.h"
#include "Support/SignalCounter.h"
#include "Support/UntilTrue.h"

#include <QGuiApplication>
#include <QWindow>

#include <gtest/gtest.h>

TEST(X11Application, TellsEachTimeThatItComesToTheFront) {
    const FakeDesktopLook look;
    X11Application application(look);
    const SignalCounter activations(&application, &Application::didBecomeActive);
    QWindow window;
    window.setTitle(QStringLiteral("In front"));
    window.show();
    EXPECT_TRUE(untilTrue([&activations] { return activations.count() == 1; }));

    const TestEditor editor;
    ASSERT_TRUE(untilTrue([] { return QGuiApplication::applicationState() != Qt::ApplicationActive; }));
    EXPECT_EQ(activations.count(), 1);
    application.orderFront(window.title());
    EXPECT_TRUE(untilTrue([&activations] { return activations.count() == 2; }));
}

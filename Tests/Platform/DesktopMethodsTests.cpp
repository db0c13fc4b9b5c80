#include "Platform/Linux/Desktop/DesktopMethods.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {
using Operation = DesktopOperation;
using Method = DesktopMethod;

const DesktopFacts nothing;
const DesktopFacts x11 { .hasXServer = true };
const DesktopFacts bareWayland { .hasWayland = true, .hasXServer = true };
const DesktopFacts fullWayland {
    .hasWayland = true, .hasXServer = true, .showsClipboard = true, .letsType = true, .tellsFocus = true
};

struct Choice {
    DesktopFacts facts;
    Operation operation;
    Method best;
};

const std::array choices {
    Choice { x11, Operation::Key, Method::XServer },
    Choice { x11, Operation::Paste, Method::XServer },
    Choice { x11, Operation::Clipboard, Method::XServer },
    Choice { x11, Operation::FrontApplication, Method::XServer },
    Choice { bareWayland, Operation::Paste, Method::XServer },
    Choice { bareWayland, Operation::Clipboard, Method::XServer },
    Choice { bareWayland, Operation::FrontApplication, Method::XServer },
    Choice { fullWayland, Operation::Key, Method::XServer },
    Choice { fullWayland, Operation::Paste, Method::WaylandKeyboard },
    Choice { fullWayland, Operation::Clipboard, Method::WaylandClipboard },
    Choice { fullWayland, Operation::FrontApplication, Method::WaylandWindows },
    Choice { fullWayland, Operation::Overlay, Method::XServer },
    Choice { nothing, Operation::Paste, Method::XServer },
};

const std::array operations { Operation::Key, Operation::Paste, Operation::Clipboard,
    Operation::FrontApplication, Operation::Overlay };

TEST(DesktopMethodsTests, TheBestThatCanBeUsedIsChosen) {
    for (const Choice &choice : choices) {
        EXPECT_EQ(bestDesktopMethod(choice.operation, choice.facts), choice.best)
            << "row " << &choice - choices.data();
    }
}

TEST(DesktopMethodsTests, EveryMethodThatCannotBeUsedSaysWhy) {
    for (const DesktopFacts &facts : { nothing, x11, bareWayland, fullWayland }) {
        for (const Operation operation : operations) {
            const auto methods = desktopMethods(operation, facts);
            EXPECT_FALSE(methods.empty());
            for (const DesktopMethodState &state : methods)
                EXPECT_TRUE(state.availability.isAvailable() || state.availability.reason.endsWith(u'.'));
        }
    }
}

TEST(DesktopMethodsTests, NothingCanBeUsedWithoutADesktop) {
    for (const Operation operation : operations) {
        EXPECT_TRUE(std::ranges::none_of(desktopMethods(operation, nothing),
            [](const DesktopMethodState &state) { return state.availability.isAvailable(); }));
    }
}

TEST(DesktopMethodsTests, OnlyOnWaylandTheXServerHasLimits) {
    EXPECT_EQ(desktopMethods(Operation::Key, x11).front().limit, QString());
    EXPECT_EQ(desktopMethods(Operation::Key, fullWayland).front().limit,
        QStringLiteral("The key works only in windows that run through XWayland."));
    EXPECT_EQ(desktopMethods(Operation::Paste, fullWayland).front().limit, QString());
}

TEST(DesktopMethodsTests, ARowTellsTheWayAndWhyNoBetterOneIsThere) {
    EXPECT_EQ(operationMethod(Operation::Clipboard, x11),
        (OperationMethod {
            QStringLiteral("clipboard"), QStringLiteral("the clipboard of the X server"), true, {} }));
    EXPECT_EQ(operationMethod(Operation::Paste, bareWayland),
        (OperationMethod { QStringLiteral("paste"), QStringLiteral("keys posted to the X server"), true,
            QStringLiteral("The compositor does not let programs type. The text is pasted only into windows "
                           "that run through XWayland.") }));
    EXPECT_EQ(operationMethod(Operation::Paste, fullWayland).reason, QString());
    EXPECT_FALSE(operationMethod(Operation::Key, nothing).isAvailable);
}
} // namespace

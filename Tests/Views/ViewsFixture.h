#pragma once

#include <QQmlEngine>
#include <QStringList>

#include <gtest/gtest.h>

/// An engine with the interface's module, and every warning that comes up while the test runs: one is a
/// failure.
class ViewsTest : public testing::Test {
protected:
    ViewsTest();
    ~ViewsTest() override;

    /// Takes the warnings that came up so far.
    static QStringList takeWarnings();

    QQmlEngine engine;
};

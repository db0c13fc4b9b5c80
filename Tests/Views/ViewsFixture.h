#pragma once

#include <QQmlEngine>
#include <QStringList>

#include <gtest/gtest.h>

/// An engine with the interface's module, and every warning that comes up while the test runs: one is a
/// failure.
class ViewsFixture : public testing::Test {
protected:
    ViewsFixture();
    ~ViewsFixture() override;

    /// Takes the warnings that came up so far.
    static QStringList takeWarnings();

    QQmlEngine engine;
};

#pragma once

#include <QQmlEngine>
#include <QStringList>

#include <gtest/gtest.h>

/// An engine with the interface's module. Any warning during the test fails it.
class ViewsFixture : public testing::Test {
protected:
    ViewsFixture();
    ~ViewsFixture() override;

    /// Returns and clears the warnings so far.
    static QStringList takeWarnings();

    QQmlEngine engine;
};

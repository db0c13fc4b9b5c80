#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"
#include "dictate/Waiting.h"

#include <QJsonValue>

#include <gtest/gtest.h>

/// Seconds within which a desktop does what it is going to do.
constexpr double patience = 20;

/// A test of the real program by a user who knows its controls by role and name.
class ProgramInUse : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    /// Starts the program with its window open, and waits until the keyboard is there.
    void start();

    /// The dialog of this name, which must come.
    AccessibleElement dialog(const QString &name) const;
    /// Waits for the dialog, and from then on sees nothing but what is in it.
    void enterDialog(const QString &name);
    /// Whether the dialog goes in time; from then on everything is seen again.
    bool leavesDialog(const QString &name);

    /// The control with this role and name in front; throws with what there is instead when it does not come.
    AccessibleElement control(const QString &role, const QString &name) const;
    bool isThere(const QString &role, const QString &name) const;
    /// Whether a control can be used, or comes to it in time.
    bool becomesUsable(const AccessibleElement &element) const;

    void click(const QString &role, const QString &name);
    /// Types into the field that has the keyboard, in the place of all that stands there.
    bool fill(const AccessibleElement &field, const QString &text);

    /// What the user can work with.
    const AccessibleProgram &front() const { return *m_front; }

    /// What the settings file says now; undefined when it says nothing.
    static QJsonValue stored(const QString &key);
    static bool comesToBeStored(const QString &key, const QJsonValue &value);

    VirtualUser m_user;
    RunningProgram m_program;

private:
    std::optional<AccessibleProgram> m_whole;
    std::optional<AccessibleProgram> m_front;
};

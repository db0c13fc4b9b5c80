#pragma once

#include "Desktop/TestPrograms.h"
#include "TolmiApp/History/HistoryEntry.h"

#include "desktop-driver/AccessibleProgram.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

/// The Studio of the real program in a home with a history, and the user before it.
class OpenStudio : public testing::Test {
protected:
    using State = AccessibleElement::State;

    /// What the home's history holds, newest first. The second is pinned, the third has a recording.
    static const QList<HistoryEntry> &history();
    /// The recording of the third.
    static QString recordingPath();

    /// Starts the program and waits until its window has the keyboard.
    void open(const QJsonObject &settings = {});
    void TearDown() override;

    /// Goes to the workspace of this digit, whose title is known.
    void goTo(const char *digit, const QString &title);
    /// Goes to the history and chooses an entry.
    void choose(const HistoryEntry &entry);

    /// The control with this role and name, which must appear.
    AccessibleElement control(const QString &role, const QString &name) const;
    /// The button with this name in a dialog.
    AccessibleElement buttonIn(const AccessibleElement &dialog, const QString &name) const;
    /// The button with this name in the row of an entry.
    AccessibleElement buttonInRow(const HistoryEntry &entry, const QString &name) const;
    /// Whether the control is shown now.
    bool isShown(const QString &role, const QString &name) const;
    bool isShown(const HistoryEntry &entry) const;
    void click(const AccessibleElement &element);
    void clickButton(const QString &name);

    VirtualUser m_user;

private:
    std::optional<AccessibleElement> findButtonInRow(const HistoryEntry &entry, const QString &name) const;

    RunningProgram m_program;
    std::unique_ptr<AccessibleProgram> m_windows;
};

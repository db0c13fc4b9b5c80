#pragma once

#include "Support/FakeFileManager.h"
#include "Support/FakeFlowCollaborators.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <gtest/gtest.h>

/// A flow on the virtual clock. What it publishes stands in the journal among the calls of its collaborators.
class DictationFlowFixture : public testing::Test {
protected:
    using Kind = DictationState::Kind;

    DictationFlowFixture();
    ~DictationFlowFixture() override;

    /// What the manager is built with.
    virtual DictationFlowCollaborators collaborators() { return fakes.asCollaborators(); }
    /// Builds the manager; its setup has not run yet.
    void create();
    /// Builds the manager, runs its setup and empties the journal.
    void createSetUp();

    void keyDown();
    void keyUp();
    /// Another key joins the press.
    void chord();
    /// Key-down with the permission given; the first level sample has been taken.
    void record();
    /// A whole dictation up to the done state.
    void dictate(const QString &text);
    /// Brings a set-up flow from idle to the state, as an input would.
    void reach(Kind kind);

    /// The states that were published.
    QStringList states() const { return fakes.journal.only({ QStringLiteral("state ") }); }
    /// Lets the manager and all that it waits for go, and gives the sweeps that it asked for.
    std::vector<FakeRetentionSweeper::Call> sweepsAtEnd();

    FileURL audioCacheURL() const;

    FakeFileManager fileManager;
    FakeUserDefaults defaults;
    FakeFlowCollaborators fakes;
    VirtualClock clock;
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<DictationFlowManager> manager;
    std::weak_ptr<DictationFlowManager> weakManager;
    std::vector<double> audioLevels;

private:
    void recordPublishedFields();
    void letGo();
};

/// What a good first pass gives.
AdaptiveTranscriptionOutcome outcome(const QString &text);

/// A failure with a text of its own.
inline SystemError failure(const char *description) {
    return SystemError(QString::fromLatin1(description));
}

/// Runs `work` and gives what it wrote to standard error.
QString loggedBy(const std::function<void()> &work);

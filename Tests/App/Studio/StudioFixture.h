#pragma once

#include "App/Dictation/DictationFlowFixture.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeMicrophonePermission.h"
#include "Support/FakePasteboard.h"
#include "TolmiApp/History/TranscriptionHistory.h"

/// A flow in English that keeps a real history, and what the workspaces of the Studio ask of the platform
/// besides. Texts are pasted as they were transcribed.
class StudioFixture : public DictationFlowFixture {
protected:
    StudioFixture() {
        settings->setUiLanguage(AppLanguage::English);
        settings->setRefinementEnabled(false);
    }

    /// The history's last change is written before the disk goes.
    ~StudioFixture() override { history->waitUntilWritten(); }

    DictationFlowCollaborators collaborators() override {
        DictationFlowCollaborators made = fakes.asCollaborators();
        made.history = history;
        return made;
    }

    FakeAtomicFileWriter fileWriter;
    std::shared_ptr<TranscriptionHistory> history
        = std::make_shared<TranscriptionHistory>(clock, fileManager, fileWriter);
    FakeMicrophonePermission microphone;
    FakePasteboard pasteboard;
};

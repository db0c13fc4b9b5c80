#pragma once

#include "Support/FakeFlowCollaborators.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"

/// A dictation flow over a platform in memory, for what shows it. Nothing runs until somebody asks for it.
struct FlowManagerFixture : SettingsStoreFixture {
    FakeFlowCollaborators fakes;
    std::shared_ptr<DictationFlowManager> flow = DictationFlowManager::create(fakes.asCollaborators(),
        { clock, files, fakes.application }, std::shared_ptr<SettingsStore>(std::shared_ptr<void>(), &store));

    ~FlowManagerFixture() {
        flow.reset();
        fakes.abandonWaiting();
        clock.forgetPending();
    }

    /// Sets the flow up, as the first turn of the main loop does, and lets the sweep that it starts beside it
    /// have its folder, so that the files are the test's alone afterwards.
    void setUp() {
        clock.runPosted();
        fakes.sweeps->waitForCalls(1);
    }

    /// Key-down with the permission given.
    void record() {
        fakes.recorder->permission.give(true);
        fakes.hotkey->onKeyDown();
        clock.runPosted();
    }

    /// Key-up, with a transcription that goes on.
    void transcribe() {
        fakes.transcriber->outcomes.suspend();
        fakes.hotkey->onKeyUp();
        clock.runPosted();
    }

    /// A whole dictation up to the done state. The refinement must be off.
    void dictate(const QString &text) {
        record();
        fakes.transcriber->outcomes.give({ .text = text,
            .firstPassScore = 0.75,
            .usedFallback = false,
            .qualityPass = QualityPass::Single });
        fakes.hotkey->onKeyUp();
        clock.runPosted();
    }
};

#pragma once

#include "Foundation/Clock.h"
#include "Foundation/SerialQueue.h"
#include "Platform/Process.h"
#include "TolmiCore/TranscriptionEngine.h"
#include "TolmiCore/WhisperCLICommand.h"

/// Runs whisper-cli on one recording after the other and gives the text that it leaves in its output file.
///
/// Main thread only; the process is waited for on a thread of the engine's own. A run is never cancelled
/// from here: whoever ends the program ends the process by its launcher, and the thread that waits for it is
/// left to itself. File manager, launcher and clock must therefore live as long as the process does.
class WhisperCLIEngine final : public TranscriptionEngine {
public:
    WhisperCLIEngine(
        WhisperCLIConfiguration config, FileManager &fileManager, ProcessLauncher &launcher, Clock &clock);

    Task<TranscriptionResult> transcribe(TranscriptionRequest request) override;

private:
    /// What a run needs, apart from the engine, which the run may outlive.
    struct Runner {
        WhisperCLIConfiguration config;
        FileManager &fileManager;
        ProcessLauncher &launcher;
        Clock &clock;

        TranscriptionResult transcribe(const TranscriptionRequest &request) const;
        void run(const WhisperCLICommand &command, std::optional<double> timeoutSeconds) const;
        void waitUntilExit(Process &process, double timeoutSeconds) const;
        QString readText(const FileURL &url) const;
    };

    Runner m_runner;
    SerialQueue m_queue { QStringLiteral("Tolmi.WhisperCLIEngine") };
};

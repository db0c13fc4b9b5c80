#pragma once

#include "Foundation/Clock.h"
#include "Foundation/SerialQueue.h"
#include "Platform/Process.h"
#include "TolmiCore/TranscriptionEngine.h"
#include "TolmiCore/WhisperCLICommand.h"

/// Runs whisper-cli on one recording at a time and returns the text that it leaves in its output file.
///
/// Main thread only; a thread of the engine waits for the process. Runs are never cancelled here: on quit the
/// process is ended through its launcher, and the thread that waits for it is abandoned. File manager,
/// launcher and clock must therefore live until the program exits.
class WhisperCLIEngine final : public TranscriptionEngine {
public:
    WhisperCLIEngine(
        WhisperCLIConfiguration config, FileManager &fileManager, ProcessLauncher &launcher, Clock &clock);

    Task<TranscriptionResult> transcribe(TranscriptionRequest request) override;

private:
    /// What a run needs; separate from the engine, which the run may outlive.
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

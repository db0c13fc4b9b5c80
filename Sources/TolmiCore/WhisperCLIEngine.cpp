#include "TolmiCore/WhisperCLIEngine.h"

#include "Foundation/QueuedWork.h"
#include "Text/Text.h"

#include <QStringDecoder>

using EngineError = TranscriptionEngineError;

namespace {
/// Seconds; how often a process with a time limit is checked.
constexpr double pollInterval = 0.010;

/// Decoded UTF-8; absent if `bytes` are not valid UTF-8.
std::optional<QString> decoded(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

QString trimmedOutput(const QByteArray &bytes) {
    return Text::trimmed(decoded(bytes).value_or(QString()));
}

QString failureMessage(Process &process) {
    const QString errorText = trimmedOutput(process.readStandardError());
    const QString outputText = trimmedOutput(process.readStandardOutput());
    if (!errorText.isEmpty())
        return errorText;
    return outputText.isEmpty() ? QStringLiteral("Unknown whisper-cli error.") : outputText;
}
} // namespace

WhisperCLIEngine::WhisperCLIEngine(
    WhisperCLIConfiguration config, FileManager &fileManager, ProcessLauncher &launcher, Clock &clock)
    : m_runner { std::move(config), fileManager, launcher, clock } { }

Task<TranscriptionResult> WhisperCLIEngine::transcribe(TranscriptionRequest request) {
    const auto work = [runner = m_runner, request] { return runner.transcribe(request); };
    co_return co_await runOn(m_queue, m_runner.clock, work);
}

TranscriptionResult WhisperCLIEngine::Runner::transcribe(const TranscriptionRequest &request) const {
    const WhisperCLICommand command
        = WhisperCLICommandBuilder(config, fileManager).makeCommand(request.audioFileURL, request.id);
    run(command, config.executionTimeoutSeconds);
    if (!fileManager.fileExists(command.outputTextURL.path()))
        throw EngineError(EngineError::OutputMissing { command.outputTextURL });
    const QString text = Text::trimmed(readText(command.outputTextURL));
    if (text.isEmpty())
        throw EngineError(EngineError::EmptyTranscript { request.audioFileURL });
    return { request.id, text, request.audioFileURL, clock.now() };
}

// The pipes are not read while the process runs or after a success, because its output is not needed then. A
// process that fills a pipe blocks until the time limit ends it.
void WhisperCLIEngine::Runner::run(
    const WhisperCLICommand &command, std::optional<double> timeoutSeconds) const {
    const auto process = launcher.launch(command.executableURL, command.arguments);
    if (timeoutSeconds && *timeoutSeconds > 0)
        waitUntilExit(*process, *timeoutSeconds);
    else
        process->waitUntilExit();
    if (const int status = process->terminationStatus(); status != 0)
        throw EngineError(EngineError::ProcessFailed { status, failureMessage(*process) });
}

void WhisperCLIEngine::Runner::waitUntilExit(Process &process, double timeoutSeconds) const {
    const Date deadline = clock.now() + timeoutSeconds;
    while (process.isRunning() && clock.now() < deadline)
        process.waitUntilExit(pollInterval);
    if (!process.isRunning())
        return;
    process.terminate();
    process.waitUntilExit();
    throw EngineError(EngineError::ProcessTimedOut { timeoutSeconds });
}

QString WhisperCLIEngine::Runner::readText(const FileURL &url) const {
    std::optional<QString> text = decoded(fileManager.contents(url));
    if (!text)
        throw SystemError(QStringLiteral("File is not valid UTF-8: ") + url.path());
    return *text;
}

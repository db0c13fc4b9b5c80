#include "Support/FakeFlowCollaborators.h"

#include "Foundation/Error.h"

#include <QMetaEnum>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

namespace {
/// Records a start and throws what is prepared for it.
void startCapture(StartFailures &failures, std::vector<FileURL> &startedURLs, const FileURL &url) {
    startedURLs.push_back(url);
    if (failures.empty())
        return;
    const std::exception_ptr failure = failures.front();
    failures.pop_front();
    std::rethrow_exception(failure);
}

QString describe(std::optional<Appearance> appearance) {
    if (!appearance)
        return QStringLiteral("system");
    return appearance == Appearance::Light ? QStringLiteral("light") : QStringLiteral("dark");
}
} // namespace

QStringList FlowJournal::only(const QStringList &beginnings) const {
    QStringList kept;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(kept), [&](const QString &line) {
        return std::any_of(beginnings.begin(), beginnings.end(),
            [&](const QString &beginning) { return line.startsWith(beginning); });
    });
    return kept;
}

QString describe(const DictationState &state) {
    const auto name
        = QString::fromLatin1(QMetaEnum::fromType<DictationState::Kind>().valueToKey(int(state.kind())));
    return state.kind() == DictationState::Kind::Error ? name + u'(' + state.message() + u')' : name;
}

bool FakeHotkeyManager::checkAccessibility() {
    m_journal.add(QStringLiteral("hotkey.check"));
    return isTrusted;
}

Task<> FakeLiveCapture::prepareToRecord() {
    if (preparation)
        co_await preparation->call();
}

void FakeLiveCapture::startRecording(const FileURL &url) {
    m_journal.add(QStringLiteral("live.start"));
    startCapture(startFailures, startedURLs, url);
}

Task<bool> FakeRecorder::requestPermission() {
    m_journal.add(QStringLiteral("recorder.requestPermission"));
    return permission.call();
}

void FakeRecorder::startRecording(const FileURL &url) {
    m_journal.add(QStringLiteral("recorder.start"));
    startCapture(startFailures, startedURLs, url);
}

Task<AdaptiveTranscriptionOutcome> FakeTranscriptionService::transcribe(
    AdaptiveTranscriptionRequest request, std::function<void()> onFallbackStart) {
    m_journal.add(QStringLiteral("transcriber.transcribe"));
    requests.push_back(std::move(request));
    announceFallback = std::move(onFallbackStart);
    return outcomes.call();
}

Task<QString> FakeRefiner::refine(QString text) {
    m_journal.add(m_name + QStringLiteral(".refine ") + text);
    return texts.call();
}

PasteTargetCapture FakePasteService::paste(const QString &text, AppLanguage language) {
    m_journal.add(QStringLiteral("paster.paste ") + text + u' ' + rawValue(language));
    if (duringPaste)
        duringPaste();
    return target;
}

void FakeTransitionSoundPlayer::sync(
    const DictationState &state, ProcessingTransitionSound selection, double volume) {
    m_journal.add(QStringLiteral("sound.sync %1 %2 %3")
                      .arg(describe(state), rawValue(selection), QString::number(volume)));
}

void FakeOverlayPanel::show(const DictationState &state, AppLanguage language) {
    m_journal.add(QStringLiteral("overlay.show ") + describe(state) + u' ' + rawValue(language));
}

void FakeHistory::add(const FinishedDictation &dictation) {
    m_journal.add(QStringLiteral("history.add"));
    added.push_back(dictation);
}

void FakeRetentionSweeper::failNext(const QString &description) {
    std::lock_guard lock(m_mutex);
    m_failures.push_back(description);
}

std::vector<FakeRetentionSweeper::Call> FakeRetentionSweeper::waitForCalls(size_t count) {
    std::unique_lock lock(m_mutex);
    m_called.wait(lock, [&] { return m_calls.size() >= count; });
    return m_calls;
}

AudioRetentionSweepResult FakeRetentionSweeper::sweep(
    const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB) {
    m_niceness = ::getpriority(PRIO_PROCESS, id_t(::gettid()));
    std::lock_guard lock(m_mutex);
    m_calls.push_back({ directoryURL, retentionHours, maxSizeMB });
    m_called.notify_all();
    if (m_failures.empty())
        return {};
    const SystemError failure(m_failures.front());
    m_failures.pop_front();
    throw failure;
}

void RemovedRecordings::add(const FileURL &url) {
    std::lock_guard lock(m_mutex);
    m_urls.push_back(url);
    m_changed.notify_all();
}

std::vector<FileURL> RemovedRecordings::waitFor(size_t count) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_urls.size() >= count; });
    return m_urls;
}

void FakeApplication::setAppearance(std::optional<Appearance> appearance) {
    m_journal.add(QStringLiteral("application.setAppearance ") + describe(appearance));
}

DictationFlowCollaborators FakeFlowCollaborators::asCollaborators() {
    return { .hotkeyManager = hotkey,
        .liveCapture = live,
        .recorder = recorder,
        .adaptiveTranscriptionService = transcriber,
        .pasteService = paster,
        .transitionSoundPlayer = sound,
        .history = history,
        .fallbackRefiner = rules,
        .makeOverlayPanel =
            [this] {
                journal.add(QStringLiteral("overlay.make"));
                return overlay;
            },
        .makeOllamaRefiner =
            [this](OllamaConfiguration configuration) {
                journal.add(QStringLiteral("ollama.make"));
                ollamaConfigurations.push_back(std::move(configuration));
                return ollama;
            },
        .makeRetentionSweeper = [sweeps = sweeps](FileManager &) { return sweeps; },
        .removeRecording = [removed = removed](const FileURL &url) { removed->add(url); } };
}

void FakeFlowCollaborators::abandonWaiting() {
    if (live->preparation)
        live->preparation->abandonWaiting();
    recorder->permission.abandonWaiting();
    transcriber->outcomes.abandonWaiting();
    ollama->texts.abandonWaiting();
    rules->texts.abandonWaiting();
}

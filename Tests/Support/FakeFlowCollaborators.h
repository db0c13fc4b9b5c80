#pragma once

#include "Platform/Application.h"
#include "Support/ScriptedOperation.h"
#include "TolmiApp/Dictation/DictationFlowCollaborators.h"

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

/// What happened, in order, over all collaborators of a flow: one line for each call, its name first.
class FlowJournal {
public:
    QStringList lines;

    void add(const QString &line) { lines.append(line); }
    /// The lines that begin with one of `beginnings`.
    QStringList only(const QStringList &beginnings) const;
    int count(const QString &line) const { return int(lines.count(line)); }
};

/// "Recording", or "Error(message)".
QString describe(const DictationState &state);

class FakeHotkeyManager final : public HotkeyManager {
public:
    explicit FakeHotkeyManager(FlowJournal &journal)
        : m_journal(journal) { }

    bool isTrusted = true;
    bool isKeyHeld = false;

    bool checkAccessibility() override;
    void promptForAccessibility() override { m_journal.add(QStringLiteral("hotkey.prompt")); }
    void openAccessibilitySettings() override { m_journal.add(QStringLiteral("hotkey.openSettings")); }
    void start() override { m_journal.add(QStringLiteral("hotkey.start")); }
    void stop() override { m_journal.add(QStringLiteral("hotkey.stop")); }
    bool isHeld() const override { return isKeyHeld; }

private:
    FlowJournal &m_journal;
};

/// What both captures do when they are told to start; none left, they work.
using StartFailures = std::deque<std::exception_ptr>;

class FakeLiveCapture final : public LiveCapture {
public:
    explicit FakeLiveCapture(FlowJournal &journal)
        : m_journal(journal) { }

    /// How the microphone is readied; empty, it is at once.
    std::optional<ScriptedOperation<bool>> preparation;
    StartFailures startFailures;
    double level = 0;
    double preRollPeak = 0;
    std::vector<FileURL> startedURLs;

    void warmupIfAuthorized() override { m_journal.add(QStringLiteral("live.warmup")); }
    Task<> prepareToRecord() override;
    void startRecording(const FileURL &url) override;
    void stopRecording() override { m_journal.add(QStringLiteral("live.stop")); }
    double currentLevel() override { return level; }
    double currentPreRollPeak() override { return preRollPeak; }

private:
    FlowJournal &m_journal;
};

class FakeRecorder final : public Recorder {
public:
    explicit FakeRecorder(FlowJournal &journal)
        : m_journal(journal) { }

    ScriptedOperation<bool> permission;
    StartFailures startFailures;
    double level = 0;
    std::vector<FileURL> startedURLs;

    Task<bool> requestPermission() override;
    void startRecording(const FileURL &url) override;
    void stopRecording() override { m_journal.add(QStringLiteral("recorder.stop")); }
    double currentLevel() override { return level; }

private:
    FlowJournal &m_journal;
};

class FakeTranscriptionService final : public TranscriptionService {
public:
    explicit FakeTranscriptionService(FlowJournal &journal)
        : m_journal(journal) { }

    ScriptedOperation<AdaptiveTranscriptionOutcome> outcomes;
    std::vector<AdaptiveTranscriptionRequest> requests;
    /// The announcement of a second pass that the latest call was given.
    std::function<void()> announceFallback;

    Task<AdaptiveTranscriptionOutcome> transcribe(
        AdaptiveTranscriptionRequest request, std::function<void()> onFallbackStart) override;

private:
    FlowJournal &m_journal;
};

class FakeRefiner final : public TextRefiner {
public:
    /// `name` begins its lines.
    FakeRefiner(FlowJournal &journal, QString name)
        : m_journal(journal)
        , m_name(std::move(name)) { }

    ScriptedOperation<QString> texts;

    Task<QString> refine(QString text) override;

private:
    FlowJournal &m_journal;
    QString m_name;
};

class FakePasteService final : public PasteService {
public:
    explicit FakePasteService(FlowJournal &journal)
        : m_journal(journal) { }

    /// What a paste reports.
    PasteTargetCapture target { QStringLiteral("Editor"), QStringLiteral("org.example.editor"), {} };
    /// Runs inside a paste.
    std::function<void()> duringPaste;

    /// Whether the clipboard takes the text.
    bool posts = true;

    void prepare() override { ++prepareCount; }
    PasteTargetCapture paste(const QString &text, AppLanguage language) override;
    bool hasPosted() const override { return posts; }

    int prepareCount = 0;

private:
    FlowJournal &m_journal;
};

class FakeTransitionSoundPlayer final : public TransitionSoundPlayer {
public:
    explicit FakeTransitionSoundPlayer(FlowJournal &journal)
        : m_journal(journal) { }

    void sync(const DictationState &state, ProcessingTransitionSound selection, double volume) override;

private:
    FlowJournal &m_journal;
};

class FakeOverlayPanel final : public OverlayPanel {
public:
    explicit FakeOverlayPanel(FlowJournal &journal)
        : m_journal(journal) { }

    std::vector<double> levels;

    void show(const DictationState &state, AppLanguage language) override;
    void hide() override { m_journal.add(QStringLiteral("overlay.hide")); }
    void updateAudioLevel(double level) override { levels.push_back(level); }

private:
    FlowJournal &m_journal;
};

class FakeHistory final : public DictationHistory {
public:
    explicit FakeHistory(FlowJournal &journal)
        : m_journal(journal) { }

    std::vector<FinishedDictation> added;

    void add(const FinishedDictation &dictation) override;

private:
    FlowJournal &m_journal;
};

/// Sweeps run on a thread of their own; any thread may call this.
class FakeRetentionSweeper final : public RetentionSweeper {
public:
    struct Call {
        FileURL directoryURL;
        qint64 retentionHours;
        qint64 maxSizeMB;

        friend bool operator==(const Call &, const Call &) = default;
    };

    /// The text of the failure of the next sweep that has none yet.
    void failNext(const QString &description);
    /// Blocks until `count` sweeps have been asked for, and gives them.
    std::vector<Call> waitForCalls(size_t count);
    /// Of the thread that the latest sweep ran on.
    int niceness() const { return m_niceness; }

    AudioRetentionSweepResult sweep(
        const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB) override;

private:
    std::mutex m_mutex;
    std::condition_variable m_called;
    std::vector<Call> m_calls;
    std::deque<QString> m_failures;
    std::atomic<int> m_niceness = 0;
};

/// The recordings that were removed, on a thread of its own; any thread may call this.
class RemovedRecordings {
public:
    void add(const FileURL &url);
    /// Blocks until `count` have been removed, and gives them.
    std::vector<FileURL> waitFor(size_t count);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<FileURL> m_urls;
};

class FakeApplication final : public Application {
public:
    explicit FakeApplication(FlowJournal &journal)
        : m_journal(journal) { }

    void setAppearance(std::optional<Appearance> appearance) override;
    void activate() override { m_journal.add(QStringLiteral("application.activate")); }
    void orderFront(const QString &title) override {
        m_journal.add(QStringLiteral("application.orderFront ") + title);
    }

private:
    FlowJournal &m_journal;
};

/// One of each, and the record of all that happens to them.
struct FakeFlowCollaborators {
    FlowJournal journal;
    std::shared_ptr<FakeHotkeyManager> hotkey = std::make_shared<FakeHotkeyManager>(journal);
    std::shared_ptr<FakeLiveCapture> live = std::make_shared<FakeLiveCapture>(journal);
    std::shared_ptr<FakeRecorder> recorder = std::make_shared<FakeRecorder>(journal);
    std::shared_ptr<FakeTranscriptionService> transcriber
        = std::make_shared<FakeTranscriptionService>(journal);
    std::shared_ptr<FakePasteService> paster = std::make_shared<FakePasteService>(journal);
    std::shared_ptr<FakeTransitionSoundPlayer> sound = std::make_shared<FakeTransitionSoundPlayer>(journal);
    std::shared_ptr<FakeOverlayPanel> overlay = std::make_shared<FakeOverlayPanel>(journal);
    std::shared_ptr<FakeHistory> history = std::make_shared<FakeHistory>(journal);
    std::shared_ptr<FakeRetentionSweeper> sweeps = std::make_shared<FakeRetentionSweeper>();
    std::shared_ptr<RemovedRecordings> removed = std::make_shared<RemovedRecordings>();
    std::shared_ptr<FakeRefiner> ollama = std::make_shared<FakeRefiner>(journal, QStringLiteral("ollama"));
    std::shared_ptr<FakeRefiner> rules = std::make_shared<FakeRefiner>(journal, QStringLiteral("rules"));
    FakeApplication application { journal };

    /// Every configuration that an Ollama refiner was built from; each time `ollama` is what came of it.
    std::vector<OllamaConfiguration> ollamaConfigurations;

    DictationFlowCollaborators asCollaborators();

    /// Abandons every call that is suspended in one of them.
    void abandonWaiting();
};

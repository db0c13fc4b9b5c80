#include "App/Dictation/DictationFlowFixture.h"

namespace {
QString truthText(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}
} // namespace

DictationFlowFixture::DictationFlowFixture()
    : settings(std::make_shared<SettingsStore>(defaults, fileManager, clock, BundleInfo {})) { }

DictationFlowFixture::~DictationFlowFixture() {
    letGo();
}

void DictationFlowFixture::letGo() {
    manager.reset();
    fakes.abandonWaiting();
    clock.forgetPending();
    EXPECT_TRUE(weakManager.expired()) << "something still holds the manager";
}

void DictationFlowFixture::create() {
    manager
        = DictationFlowManager::create(collaborators(), { clock, fileManager, fakes.application }, settings);
    weakManager = manager;
    recordPublishedFields();
}

void DictationFlowFixture::recordPublishedFields() {
    auto &journal = fakes.journal;
    auto *flow = manager.get();
    QObject::connect(flow, &DictationFlowManager::stateWillChange, flow,
        [&journal](const auto &value) { journal.add(QStringLiteral("state ") + describe(value)); });
    QObject::connect(flow, &DictationFlowManager::lastTranscriptWillChange, flow,
        [&journal](const auto &value) { journal.add(QStringLiteral("lastTranscript ") + value); });
    QObject::connect(flow, &DictationFlowManager::accessibilityGrantedWillChange, flow,
        [&journal](bool value) { journal.add(QStringLiteral("accessibilityGranted ") + truthText(value)); });
    QObject::connect(flow, &DictationFlowManager::firstPassScoreWillChange, flow, [&journal](double value) {
        journal.add(QStringLiteral("firstPassScore ") + QString::number(value));
    });
    QObject::connect(flow, &DictationFlowManager::usedFallbackWillChange, flow,
        [&journal](bool value) { journal.add(QStringLiteral("usedFallback ") + truthText(value)); });
    QObject::connect(flow, &DictationFlowManager::audioLevelWillChange, flow,
        [this](double value) { audioLevels.push_back(value); });
}

void DictationFlowFixture::createSetUp() {
    create();
    clock.runPosted();
    fakes.journal.lines.clear();
}

void DictationFlowFixture::keyDown() {
    fakes.hotkey->onKeyDown();
    clock.runPosted();
}

void DictationFlowFixture::keyUp() {
    fakes.hotkey->onKeyUp();
    clock.runPosted();
}

void DictationFlowFixture::chord() {
    fakes.hotkey->onChord();
    clock.runPosted();
}

void DictationFlowFixture::record() {
    fakes.recorder->permission.give(true);
    keyDown();
    ASSERT_EQ(manager->state(), Kind::Recording);
}

void DictationFlowFixture::dictate(const QString &text) {
    record();
    fakes.transcriber->outcomes.give(outcome(text));
    keyUp();
    ASSERT_EQ(manager->state(), Kind::Done);
}

void DictationFlowFixture::reach(Kind kind) {
    if (kind == Kind::Idle)
        return;
    if (kind == Kind::Error) {
        fakes.recorder->permission.give(false);
        return keyDown();
    }
    record();
    if (kind == Kind::Recording)
        return;
    if (kind == Kind::Done)
        fakes.transcriber->outcomes.give(outcome(QString()));
    else
        fakes.transcriber->outcomes.suspend();
    keyUp();
    if (kind == Kind::OptimizingQuality)
        fakes.transcriber->announceFallback();
    if (kind == Kind::Refining) {
        fakes.ollama->texts.suspend();
        fakes.transcriber->outcomes.answer(outcome(QStringLiteral("text")));
    }
}

std::vector<FakeRetentionSweeper::Call> DictationFlowFixture::sweepsAtEnd() {
    letGo();
    return fakes.sweeps->waitForCalls(0);
}

FileURL DictationFlowFixture::audioCacheURL() const {
    return fileManager.applicationSupport->appendingPathComponent(QStringLiteral("Tolmi/audio-cache"));
}

AdaptiveTranscriptionOutcome outcome(const QString &text) {
    return {
        .text = text, .firstPassScore = 0.75, .usedFallback = false, .qualityPass = QualityPass::Single
    };
}

QString loggedBy(const std::function<void()> &work) {
    testing::internal::CaptureStderr();
    work();
    return QString::fromStdString(testing::internal::GetCapturedStderr());
}

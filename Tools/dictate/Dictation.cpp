#include "dictate/Dictation.h"

#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include <QProcess>

namespace {
// The user's clipboard content before the dictation, which must be restored afterwards.
const QString usersClipboard = QStringLiteral("the user's own clipboard");

void fillTimes(DictationReport &report, const DictationStage &stage, double keyDown) {
    for (const RunningProgram::Stage &seen : stage.program.stages()) {
        if (seen.kind == u"state")
            report.states.emplace_back(seen.detail, seen.seconds - keyDown);
    }
    if (const auto recording = stage.program.firstStage(QStringLiteral("state"), QStringLiteral("recording")))
        report.keyDownToRecording = recording->seconds - keyDown;
    if (const auto transcribed = stage.program.firstStage(QStringLiteral("transcribed")))
        report.transcription = transcribed->detail.toDouble();
    const auto keyUp = stage.user.timeOf(VirtualUser::rightAlt, false);
    const auto paste = stage.user.timeOf(stage.user.keyCodeOf("v"), true);
    if (keyUp && paste)
        report.keyUpToPaste = double(*paste - *keyUp) / 1000;
}

std::optional<HistoryRecord> newestRecord() {
    const QJsonObject entry = historyEntries().first().toObject();
    return HistoryRecord { entry["pasteTargetAppName"].toString(), entry["pasteTargetBundleID"].toString(),
        entry["audioFileRelativePath"].toString(), entry["qualityPass"].toString(),
        entry["durationSeconds"].toDouble() };
}

bool speak(DictationReport &report, const DictationStage &stage, const QString &wavPath) {
    stage.user.press(VirtualUser::rightAlt);
    const QString recording = QStringLiteral("recording");
    const bool isRecording = waitUntil([&] { return stage.program.state() == recording; }, 10);
    const bool isSpoken = isRecording && playIntoMicrophone(wavPath);
    if (isSpoken)
        pause(0.2);
    stage.user.release(VirtualUser::rightAlt);
    if (!isRecording)
        report.failure = QStringLiteral("the key did not start a recording");
    else if (!isSpoken)
        report.failure = QStringLiteral("the file could not be played into the microphone: ") + wavPath;
    return isSpoken;
}
} // namespace

bool playIntoMicrophone(const QString &wavPath) {
    QProcess player;
    player.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    player.start(QStringLiteral("paplay"),
        { QStringLiteral("--device=") + qEnvironmentVariable("TOLMI_DESKTOP_MICFEED"), wavPath });
    waitUntil([&player] { return player.state() == QProcess::NotRunning; }, 120);
    return player.exitStatus() == QProcess::NormalExit && player.exitCode() == 0;
}

DictationReport dictate(const DictationStage &stage, const QString &wavPath) {
    DictationReport report;
    stage.editor.clear();
    setClipboardText(usersClipboard);
    stage.program.forgetStages();
    stage.user.forget();
    const QStringList earlierRecordings = keptRecordings();
    const qsizetype earlierEntries = historyEntries().size();
    const double keyDown = stage.program.clock();
    if (speak(report, stage, wavPath)) {
        const auto hasEnded = [&] { return stage.program.state() == u"idle" || !stage.program.isRunning(); };
        if (!waitUntil(hasEnded, 120))
            report.failure = QStringLiteral("the program did not become idle again");
    }
    pause(0.1);
    fillTimes(report, stage, keyDown);
    report.isClipboardRestored = clipboardText() == usersClipboard;
    const QStringList recordings = keptRecordings();
    if (recordings.size() > earlierRecordings.size())
        report.recordingPath = recordings.first();
    if (historyEntries().size() > earlierEntries)
        report.history = newestRecord();
    report.pasted = stage.editor.text();
    return report;
}

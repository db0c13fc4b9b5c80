#pragma once

#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeAudioPlayers.h"
#include "Support/FakeFileViewer.h"
#include "Support/FakePasteboard.h"
#include "Support/FakeSavePanel.h"
#include "Support/SettingsStoreFixture.h"
#include "Text/DateTexts.h"
#include "TolmiApp/History/HistoryCodec.h"
#include "TolmiApp/History/HistoryWorkspaceModel.h"

/// The history workspace of a user with the given entries, in English and in UTC, over a platform in memory.
struct HistoryWorkspaceFixture {
    explicit HistoryWorkspaceFixture(const QList<HistoryEntry> &entries = {})
        : history(clock, withHistory(entries), historyWriter) {
        settings.store.setUiLanguage(AppLanguage::English);
    }

    /// The workspace as it is shown.
    std::unique_ptr<HistoryWorkspaceModel> open() {
        return std::make_unique<HistoryWorkspaceModel>(
            HistoryWorkspaceModel::Dependencies { history, settings.store, selection }, platform,
            PlatformTexts::forLinux());
    }

    /// Where a recording lies that entries name by its file name.
    static QString recordingPath(const QString &name) {
        return QStringLiteral("/home/user/.local/share/Tolmi/audio-cache/") + name;
    }
    /// Whether neither the history nor anything else has been written.
    bool isNothingWritten() {
        history.waitUntilWritten();
        return historyWriter.writes.empty() && writer.writes.empty();
    }
    void addRecording(const QString &name) { files.files[recordingPath(name)] = "sound"; }

    SettingsStoreFixture settings;
    VirtualClock &clock = settings.clock;
    FakeFileManager &files = settings.files;
    /// Writes everything but the history, whose writes come on a thread of their own.
    FakeAtomicFileWriter writer;
    FakeAtomicFileWriter historyWriter;
    FakePasteboard pasteboard;
    FakeAudioPlayers players;
    FakeFileViewer fileViewer;
    FakeSavePanel savePanel;
    DateTexts dates { { QStringLiteral("UTC"), false } };
    TranscriptionHistory history;
    HistorySelection selection;
    /// What the user was told elsewhere, "TITLE: MESSAGE".
    QStringList notices;
    HistoryWorkspacePlatform platform { clock, files, writer, pasteboard, players, fileViewer, savePanel,
        dates, [this](const QString &title, const QString &message) {
            notices.append(title + QStringLiteral(": ") + message);
        } };

private:
    FileManager &withHistory(const QList<HistoryEntry> &entries) {
        if (!entries.isEmpty())
            files.files[QStringLiteral("/home/user/.local/share/Tolmi/history.json")]
                = HistoryCodec::encode(entries).value();
        return files;
    }
};

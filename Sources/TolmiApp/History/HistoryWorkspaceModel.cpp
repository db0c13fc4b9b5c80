#include "TolmiApp/History/HistoryWorkspaceModel.h"

#include "Foundation/Error.h"
#include "Text/DateTexts.h"
#include "Text/Text.h"
#include "TolmiApp/History/HistoryExportFormatter.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

using L10n::Key;
using AudioState = HistoryEntryDetail::AudioState;

namespace {
constexpr double minute = 60;
/// How often the workspace looks whether the minute is over: timers stand still while the machine sleeps, and
/// the clock may be set.
constexpr double tickSeconds = 5;
constexpr double undoSeconds = 10;
/// Entries that are made ready for the search in one turn of the main loop, a few milliseconds of work.
constexpr int preparedAtOnce = 500;

QList<QUuid> idsOf(const QList<HistoryEntry> &entries) {
    QList<QUuid> ids;
    ids.reserve(entries.size());
    for (const HistoryEntry &entry : entries)
        ids.append(entry.id);
    return ids;
}
} // namespace

HistoryWorkspaceModel::HistoryWorkspaceModel(const Dependencies &dependencies,
    const HistoryWorkspacePlatform &platform, PlatformTexts texts, QObject *parent)
    : ObservableObject(parent)
    , m_history(dependencies.history)
    , m_settings(dependencies.settings)
    , m_selection(dependencies.selection)
    , m_platform(platform)
    , m_texts(texts)
    , m_audioCacheStore(platform.fileManager)
    , m_audioPlayback(platform.audioPlayers, platform.clock)
    , m_rows(platform.dates)
    , m_entryIDs(idsOf(m_history.entries())) {
    m_focusedRow = -1;
    connect(&m_history, &TranscriptionHistory::entriesChanged, this, [this] { noticeChangedEntries(); });
    connect(&m_settings, &SettingsStore::uiLanguageChanged, this, [this] { refreshWords(); });
    connect(&m_selection, &HistorySelection::selectedHistoryEntryIDChanged, this, [this] { refreshFocus(); });
    const auto words = &HistoryWorkspaceModel::wordsChanged;
    connect(&m_history, &TranscriptionHistory::entriesChanged, this, words);
    connect(&m_settings, &SettingsStore::uiLanguageChanged, this, words);
    connect(this, &HistoryWorkspaceModel::selectedIDsChanged, this, words);
    connect(this, &HistoryWorkspaceModel::undoableCountChanged, this, words);
    const auto playback = &HistoryWorkspaceModel::playbackShown;
    connect(&m_audioPlayback, &HistoryAudioPlaybackController::playingEntryIDChanged, this, playback);
    connect(&m_audioPlayback, &HistoryAudioPlaybackController::isPlayingChanged, this, playback);
    connect(this, &HistoryWorkspaceModel::detailChanged, this, playback);
    connect(this, &HistoryWorkspaceModel::wordsChanged, this, playback);
    m_rows.setEntries(m_history.entriesForDisplay());
    refreshWords();
    ensureFocusedEntryStillValid();
    callAfter(tickSeconds, &HistoryWorkspaceModel::tick);
    callAfter(0, &HistoryWorkspaceModel::prepareSearchStepByStep);
}

HistoryWorkspaceModel::~HistoryWorkspaceModel() {
    // What it tells must not reach a workspace that is half gone.
    m_audioPlayback.disconnect(this);
    m_audioPlayback.stopPlayback();
}

QString HistoryWorkspaceModel::text(Key key) const {
    return m_texts.text(key, m_settings.uiLanguage());
}

// What is shown

void HistoryWorkspaceModel::search() {
    m_rows.setQuery(Text::trimmed(searchText()));
    ensureFocusedEntryStillValid();
    Q_EMIT entriesShown();
}

void HistoryWorkspaceModel::noticeChangedEntries() {
    m_rows.setEntries(m_history.entriesForDisplay());
    const QList<QUuid> ids = idsOf(m_history.entries());
    if (m_entryIDs != ids) {
        m_entryIDs = ids;
        const QSet<QUuid> remaining(ids.begin(), ids.end());
        setSelectedIDs(selectedIDs() & remaining);
        m_rows.setTickedIDs(selectedIDs());
        m_audioPlayback.stopIfRemoved(remaining);
        ensureFocusedEntryStillValid();
        callAfter(0, &HistoryWorkspaceModel::prepareSearchStepByStep);
    }
    refreshFocus();
    Q_EMIT entriesShown();
}

void HistoryWorkspaceModel::ensureFocusedEntryStillValid() {
    const auto &selected = m_selection.selectedHistoryEntryID();
    if (!hasDisplayedEntries())
        m_selection.setSelectedHistoryEntryID(std::nullopt);
    else if (!selected || m_rows.rowOf(*selected) < 0)
        focusFirst();
    // The same entry may stand in another row now.
    refreshFocus();
}

void HistoryWorkspaceModel::focusFirst() {
    m_selection.setSelectedHistoryEntryID(
        hasDisplayedEntries() ? std::optional(m_rows.entry(0).id) : std::nullopt);
}

void HistoryWorkspaceModel::refreshFocus() {
    const auto &selected = m_selection.selectedHistoryEntryID();
    const int row = selected ? m_rows.rowOf(*selected) : -1;
    setFocusedRow(row < 0 && hasDisplayedEntries() ? 0 : row);
    refreshDetail();
}

void HistoryWorkspaceModel::refreshDetail() {
    setDetail(focusedRow() < 0 ? HistoryEntryDetail() : detailOf(m_rows.entry(focusedRow())));
}

HistoryEntryDetail HistoryWorkspaceModel::detailOf(const HistoryEntry &entry) const {
    const AppLanguage language = m_settings.uiLanguage();
    HistoryEntryDetail detail;
    detail.isPresent = true;
    detail.entryID = entry.id;
    detail.date = m_platform.dates.dateAndTime(entry.timestamp, rawValue(language));
    detail.language = L10n::languageLabel(entry.language, language);
    detail.pasteFacts = pasteFactsOf(entry);
    detail.rawText = entry.rawText;
    detail.refinedText = entry.refinedText;
    const QString path = Text::trimmed(entry.audioFileRelativePath.value_or(QString()));
    if (path.isEmpty())
        return detail;
    detail.audioURL = m_audioCacheStore.resolveURL(path);
    detail.audioFile
        = L10n::labelled(Key::historyAudioPathLabel, detail.audioURL.lastPathComponent(), language);
    const bool exists = m_platform.fileManager.fileExists(detail.audioURL.path());
    detail.audioState = exists ? AudioState::Available : AudioState::Missing;
    return detail;
}

QStringList HistoryWorkspaceModel::pasteFactsOf(const HistoryEntry &entry) const {
    if (!entry.pasteTargetAppName)
        return { text(Key::historyNoPasteMetadata) };
    const AppLanguage language = m_settings.uiLanguage();
    QStringList facts { L10n::pasteTargetLabel(entry.pasteTargetAppName, language) };
    if (!entry.pasteTargetBundleID.value_or(QString()).isEmpty())
        facts += L10n::labelled(Key::historyBundleID, *entry.pasteTargetBundleID, language);
    if (entry.pasteTimestamp)
        facts += L10n::labelled(Key::historyPasteTime,
            m_platform.dates.dateAndTime(*entry.pasteTimestamp, rawValue(language)), language);
    return facts;
}

void HistoryWorkspaceModel::refreshWords() {
    m_rows.setContext(
        { m_settings.uiLanguage(), text(Key::historyPreviewEmpty), m_platform.clock.now(), selectedIDs() });
    refreshDetail();
}

QString HistoryWorkspaceModel::countText() const {
    return L10n::historyCount(m_history.entries().size(), m_settings.uiLanguage());
}

QString HistoryWorkspaceModel::selectedText() const {
    return L10n::selectedCount(selectedIDs().size(), m_settings.uiLanguage());
}

QString HistoryWorkspaceModel::undoText() const {
    return m_texts.text(
        L10n::Phrase::historyDeletedCount, m_settings.uiLanguage(), { QString::number(undoableCount()) });
}

QString HistoryWorkspaceModel::undoTitle() const {
    return m_texts.text(L10n::Phrase::historyUndo, m_settings.uiLanguage());
}

QString HistoryWorkspaceModel::copyRawTitle() const {
    return L10n::copyTitle(text(Key::historyRaw), m_settings.uiLanguage());
}

QString HistoryWorkspaceModel::copyRefinedTitle() const {
    return L10n::copyTitle(text(Key::historyRefined), m_settings.uiLanguage());
}

void HistoryWorkspaceModel::tick() {
    const Date now = m_platform.clock.now();
    if (std::abs(now - m_rows.context().now) >= minute) {
        m_rows.setNow(now);
        // A recording may have gone in the meantime.
        refreshDetail();
    }
    callAfter(tickSeconds, &HistoryWorkspaceModel::tick);
}

void HistoryWorkspaceModel::prepareSearchStepByStep() {
    if (m_rows.prepareSearch(preparedAtOnce))
        callAfter(0, &HistoryWorkspaceModel::prepareSearchStepByStep);
}

void HistoryWorkspaceModel::callAfter(double seconds, void (HistoryWorkspaceModel::*work)()) {
    m_platform.clock.callAfter(seconds, [self = QPointer(this), work] {
        if (self)
            (self->*work)();
    });
}

// The two selections

void HistoryWorkspaceModel::focusEntry(const QUuid &id) {
    m_selection.setSelectedHistoryEntryID(id);
}

void HistoryWorkspaceModel::moveFocus(int rowCount) {
    if (!hasDisplayedEntries())
        return;
    const int row = std::clamp(focusedRow() + rowCount, 0, m_rows.rowCount() - 1);
    focusEntry(m_rows.entry(row).id);
}

void HistoryWorkspaceModel::setTicked(const QUuid &id, bool isTicked) {
    QSet<QUuid> ids = selectedIDs();
    if (isTicked)
        ids.insert(id);
    else
        ids.remove(id);
    setSelectedIDs(ids);
    m_rows.setTickedIDs(ids);
}

void HistoryWorkspaceModel::toggleFocusedTick() {
    if (detail().isPresent)
        setTicked(detail().entryID, !selectedIDs().contains(detail().entryID));
}

// Changes of the history

void HistoryWorkspaceModel::togglePin(const QUuid &id) {
    m_history.togglePin(id);
}

void HistoryWorkspaceModel::deleteEntry(const QUuid &id) {
    m_history.deleteEntry(id);
    setTicked(id, false);
    if (m_selection.selectedHistoryEntryID() == id)
        focusFirst();
}

void HistoryWorkspaceModel::deleteFocusedEntry() {
    if (!detail().isPresent)
        return;
    const QUuid id = detail().entryID;
    const QList<PlacedHistoryEntry> removed = m_history.placesOf(id);
    if (selectedIDs().contains(id))
        m_deletedTicks.insert(id);
    focusNeighbour();
    deleteEntry(id);
    offerUndo(removed);
}

void HistoryWorkspaceModel::offerUndo(const QList<PlacedHistoryEntry> &removed) {
    m_deletions += removed;
    setUndoableCount(int(m_deletions.size()));
    m_platform.clock.callAfter(undoSeconds, [self = QPointer(this), offer = ++m_undoOffers] {
        if (self && self->m_undoOffers == offer)
            self->forgetDeletions();
    });
}

void HistoryWorkspaceModel::forgetDeletions() {
    m_deletions.clear();
    m_deletedTicks.clear();
    setUndoableCount(0);
}

void HistoryWorkspaceModel::undoDeletion() {
    if (!canUndo())
        return;
    const QList<PlacedHistoryEntry> removed = m_deletions;
    const QSet<QUuid> ticks = selectedIDs() | m_deletedTicks;
    forgetDeletions();
    m_history.restore(removed);
    setSelectedIDs(ticks);
    m_rows.setTickedIDs(ticks);
    // A search may have been begun meanwhile that hides it.
    if (const QUuid &last = removed.constLast().entry.id; m_rows.rowOf(last) >= 0)
        focusEntry(last);
}

void HistoryWorkspaceModel::focusNeighbour() {
    const bool isLast = focusedRow() == m_rows.rowCount() - 1;
    moveFocus(isLast ? -1 : 1);
}

void HistoryWorkspaceModel::deleteSelectedEntries() {
    if (!hasSelection())
        return;
    m_history.deleteEntries(QSet<QUuid>(selectedIDs()));
    setSelectedIDs({});
    m_rows.setTickedIDs({});
    ensureFocusedEntryStillValid();
}

void HistoryWorkspaceModel::askToClearAll() {
    setShowingClearAllConfirmation(true);
}

void HistoryWorkspaceModel::clearAll() {
    setShowingClearAllConfirmation(false);
    forgetDeletions();
    m_history.clear();
    setSelectedIDs({});
    m_rows.setTickedIDs({});
    m_selection.setSelectedHistoryEntryID(std::nullopt);
}

void HistoryWorkspaceModel::cancelClearAll() {
    setShowingClearAllConfirmation(false);
}

// Export

void HistoryWorkspaceModel::exportSelectedEntries() {
    exportEntries(m_history.entries(selectedIDs()), QStringLiteral("tolmi-history-selected"));
}

void HistoryWorkspaceModel::exportAllEntries() {
    exportEntries(m_history.entriesForDisplay(), QStringLiteral("tolmi-history-all"));
}

void HistoryWorkspaceModel::exportEntries(QList<HistoryEntry> entries, const QString &suggestedName) {
    if (entries.isEmpty())
        return;
    const QString stamp = m_platform.dates.fileStamp(m_platform.clock.now());
    const SavePanelRequest request { text(Key::historyExportPanelTitle),
        suggestedName + u'-' + stamp + QStringLiteral(".txt") };
    // The user may leave the workspace before choosing; the file is written nevertheless.
    m_platform.savePanel.run(request,
        [self = QPointer(this), &settings = m_settings, texts = m_texts, platform = m_platform,
            entries = std::move(entries)](const std::optional<FileURL> &url) {
            if (!url)
                return;
            const QString document = HistoryExportFormatter::format(entries, settings.uiLanguage());
            try {
                platform.fileWriter.write(*url, document.toUtf8(), FilePrivacy::AsUsual);
            } catch (const LocalizedError &error) {
                if (self)
                    self->showExportError(error.errorDescription());
                else
                    platform.tellElsewhere(texts.text(Key::historyExportFailed, settings.uiLanguage()),
                        error.errorDescription());
            }
        });
}

void HistoryWorkspaceModel::showExportError(const QString &message) {
    setExportErrorMessage(message);
    setShowingExportError(true);
}

void HistoryWorkspaceModel::dismissExportError() {
    setShowingExportError(false);
}

// Copies and recordings

void HistoryWorkspaceModel::copyRawText() {
    if (detail().isPresent)
        copyToClipboard(detail().rawText);
}

void HistoryWorkspaceModel::copyRefinedText() {
    if (detail().isPresent)
        copyToClipboard(detail().refinedText);
}

void HistoryWorkspaceModel::copyFocusedText() {
    if (detail().refinedText.isEmpty())
        copyRawText();
    else
        copyRefinedText();
}

void HistoryWorkspaceModel::copyToClipboard(const QString &text) {
    m_platform.pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, text.toUtf8() } } } });
}

bool HistoryWorkspaceModel::isFocusedEntryPlaying() const {
    return detail().isPresent && m_audioPlayback.isPlaying()
        && m_audioPlayback.playingEntryID() == detail().entryID;
}

QString HistoryWorkspaceModel::audioPlaybackLabel() const {
    return text(isFocusedEntryPlaying() ? Key::historyAudioPause : Key::historyAudioPlay);
}

void HistoryWorkspaceModel::toggleFocusedPlayback() {
    refreshDetail();
    if (detail().audioState != AudioState::Available)
        return;
    try {
        m_audioPlayback.togglePlayback(detail().entryID, detail().audioURL);
    } catch (const LocalizedError &) {
        setAudioErrorMessage(text(Key::historyAudioPlayFailedMessage));
        setShowingAudioError(true);
    }
}

void HistoryWorkspaceModel::dismissAudioError() {
    setShowingAudioError(false);
}

void HistoryWorkspaceModel::revealFocusedAudio() {
    refreshDetail();
    if (detail().audioState == AudioState::Available)
        m_platform.fileViewer.selectFile(detail().audioURL);
    else if (detail().audioState == AudioState::Missing)
        m_platform.fileViewer.openFolder(m_audioCacheStore.rootDirectoryURL());
}

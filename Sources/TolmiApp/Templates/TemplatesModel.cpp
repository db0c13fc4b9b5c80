#include "TolmiApp/Templates/TemplatesModel.h"

#include "Platform/Pasteboard.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Navigation/HistorySelection.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <QVariantMap>

#include <algorithm>

namespace {
/// The text that a preset is applied to.
QString sourceText(const HistoryEntry &entry) {
    return entry.refinedText.isEmpty() ? entry.rawText : entry.refinedText;
}
} // namespace

TemplatesModel::TemplatesModel(const TranscriptionHistory &history, const SettingsStore &settings,
    const HistorySelection &selection, Pasteboard &pasteboard)
    : m_history(history)
    , m_settings(settings)
    , m_selection(selection)
    , m_pasteboard(pasteboard) {
    connect(&history, &TranscriptionHistory::entriesChanged, this, &TemplatesModel::selectedEntryChanged);
    const auto forgetPreview = [this] { setPreviewState(std::nullopt); };
    connect(&selection, &HistorySelection::selectedHistoryEntryIDChanged, this, forgetPreview);
    connect(&selection, &HistorySelection::selectedHistoryEntryIDChanged, this,
        &TemplatesModel::selectedEntryChanged);
    connect(&settings, &SettingsStore::uiLanguageChanged, this, forgetPreview);
    connect(&settings, &SettingsStore::uiLanguageChanged, this, &TemplatesModel::presetsChanged);
    connect(&settings, &SettingsStore::uiLanguageChanged, this, &TemplatesModel::presetSubtitleChanged);
    connect(this, &TemplatesModel::selectedPresetChanged, this, &TemplatesModel::presetSubtitleChanged);
}

std::optional<HistoryEntry> TemplatesModel::selectedEntry() const {
    const QList<HistoryEntry> &entries = m_history.entries();
    const auto found = std::find_if(entries.begin(), entries.end(),
        [id = m_selection.selectedHistoryEntryID()](const HistoryEntry &entry) { return entry.id == id; });
    return found == entries.end() ? std::nullopt : std::optional(*found);
}

QString TemplatesModel::inputText() const {
    const std::optional<HistoryEntry> entry = selectedEntry();
    return entry ? sourceText(*entry) : QString();
}

QVariantList TemplatesModel::presets() const {
    QVariantList presets;
    for (const TemplatePreset preset : allCases<TemplatePreset>()) {
        presets.append(QVariantMap { { QStringLiteral("value"), rawValue(preset) },
            { QStringLiteral("text"), title(preset, m_settings.uiLanguage()) } });
    }
    return presets;
}

void TemplatesModel::selectPreset(const QString &id) {
    if (const auto preset = caseOfRawValue<TemplatePreset>(id))
        setSelectedPreset(*preset);
}

QString TemplatesModel::presetSubtitle() const {
    return subtitle(selectedPreset(), m_settings.uiLanguage());
}

QString TemplatesModel::outputText() const {
    return previewState() ? previewState()->outputText : QString();
}

void TemplatesModel::applyTemplate() {
    const std::optional<HistoryEntry> entry = selectedEntry();
    if (!entry)
        return;
    const QString input = sourceText(*entry);
    setPreviewState(TemplatePreviewState { .preset = selectedPreset(),
        .sourceEntryID = entry->id,
        .inputText = input,
        .outputText = transform(selectedPreset(), input, m_settings.uiLanguage()) });
}

void TemplatesModel::copyPreview() {
    if (!outputText().isEmpty())
        m_pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, outputText().toUtf8() } } } });
}

#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/History/HistoryEntry.h"
#include "TolmiApp/Templates/TemplatePreset.h"

#include <QVariantList>

class HistorySelection;
class Pasteboard;
class SettingsStore;
class TranscriptionHistory;

/// The result of applying a preset to an entry.
struct TemplatePreviewState {
    TemplatePreset preset;
    QUuid sourceEntryID;
    /// The text the preset was applied to.
    QString inputText;
    QString outputText;

    friend bool operator==(const TemplatePreviewState &, const TemplatePreviewState &) = default;
};

/// Applies a template to the selected history entry. The result is not stored. Main thread only.
class TemplatesModel final : public ObservableObject {
    Q_OBJECT
    /// The template to apply.
    TOLMI_PUBLISHED(TemplatePreset, selectedPreset, setSelectedPreset)
    /// The latest result; absent once another entry or language is chosen.
    TOLMI_PUBLISHED_READONLY(std::optional<TemplatePreviewState>, previewState, setPreviewState)

    /// Whether the selected entry exists.
    Q_PROPERTY(bool hasSelectedEntry READ hasSelectedEntry NOTIFY selectedEntryChanged)
    /// The text of the selected entry.
    Q_PROPERTY(QString inputText READ inputText NOTIFY selectedEntryChanged)
    /// All templates, with the stored string as `value` and the name as `text`.
    Q_PROPERTY(QVariantList presets READ presets NOTIFY presetsChanged)
    /// The stored string of the selected template; setting an unknown one does nothing.
    Q_PROPERTY(QString selectedPresetID READ selectedPresetID WRITE selectPreset NOTIFY selectedPresetChanged)
    Q_PROPERTY(QString presetSubtitle READ presetSubtitle NOTIFY presetSubtitleChanged)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY previewStateChanged)
    Q_PROPERTY(QString outputText READ outputText NOTIFY previewStateChanged)

public:
    /// The arguments must outlive the model.
    TemplatesModel(const TranscriptionHistory &history, const SettingsStore &settings,
        const HistorySelection &selection, Pasteboard &pasteboard);

    std::optional<HistoryEntry> selectedEntry() const;

    bool hasSelectedEntry() const { return selectedEntry().has_value(); }
    QString inputText() const;
    QVariantList presets() const;
    QString selectedPresetID() const { return rawValue(selectedPreset()); }
    void selectPreset(const QString &id);
    QString presetSubtitle() const;
    bool hasPreview() const { return previewState().has_value(); }
    QString outputText() const;

    /// Creates a preview of the selected entry, if it exists.
    Q_INVOKABLE void applyTemplate();

    /// Copies the preview to the clipboard, if there is one.
    Q_INVOKABLE void copyPreview();

Q_SIGNALS:
    void selectedEntryChanged();
    void presetsChanged();
    void presetSubtitleChanged();

private:
    const TranscriptionHistory &m_history;
    const SettingsStore &m_settings;
    const HistorySelection &m_selection;
    Pasteboard &m_pasteboard;
};

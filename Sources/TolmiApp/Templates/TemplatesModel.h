#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/History/HistoryEntry.h"
#include "TolmiApp/Templates/TemplatePreset.h"

#include <QVariantList>

class HistorySelection;
class Pasteboard;
class SettingsStore;
class TranscriptionHistory;

/// What a preset made of an entry.
struct TemplatePreviewState {
    TemplatePreset preset;
    QUuid sourceEntryID;
    /// What the preset was given.
    QString inputText;
    QString outputText;

    friend bool operator==(const TemplatePreviewState &, const TemplatePreviewState &) = default;
};

/// Puts the chosen entry of the history into a fixed shape. Nothing of it is kept. Main thread only.
class TemplatesModel final : public ObservableObject {
    Q_OBJECT
    /// The shape that is applied next.
    TOLMI_PUBLISHED(TemplatePreset, selectedPreset, setSelectedPreset)
    /// What was made last; absent when another entry or another language was chosen since.
    TOLMI_PUBLISHED_READONLY(std::optional<TemplatePreviewState>, previewState, setPreviewState)

    /// Whether the chosen entry is there.
    Q_PROPERTY(bool hasSelectedEntry READ hasSelectedEntry NOTIFY selectedEntryChanged)
    /// The text of the chosen entry.
    Q_PROPERTY(QString inputText READ inputText NOTIFY selectedEntryChanged)
    /// All shapes, each with the stored text as `value` and the name as `text`.
    Q_PROPERTY(QVariantList presets READ presets NOTIFY presetsChanged)
    /// The stored text of the selected shape; an unknown one selects nothing new.
    Q_PROPERTY(QString selectedPresetID READ selectedPresetID WRITE selectPreset NOTIFY selectedPresetChanged)
    Q_PROPERTY(QString presetSubtitle READ presetSubtitle NOTIFY presetSubtitleChanged)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY previewStateChanged)
    Q_PROPERTY(QString outputText READ outputText NOTIFY previewStateChanged)

public:
    /// All of them outlive the model.
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

    /// Makes a preview of the chosen entry, if it is there.
    Q_INVOKABLE void applyTemplate();

    /// Puts the text of the preview on the clipboard, unless there is none.
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

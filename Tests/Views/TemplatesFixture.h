#pragma once

#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakePasteboard.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Navigation/HistorySelection.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Templates/TemplatesModel.h"

/// What the templates workspace needs. The interface is initially in English.
class TemplatesFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(TemplatesModel *model READ model CONSTANT)
    Q_PROPERTY(ViewTexts *texts READ texts CONSTANT)

public:
    TemplatesFixture();

    TemplatesModel *model() { return &m_model; }
    ViewTexts *texts() { return &m_texts; }

    /// Adds an entry to the history and selects it.
    Q_INVOKABLE void choose(const QString &refinedText, const QString &rawText = {});
    Q_INVOKABLE void deleteEverything() { m_history.clear(); }
    Q_INVOKABLE void speak(const QString &language);
    /// The copied plain text; empty if there is none.
    Q_INVOKABLE QString clipboard() const;

private:
    SettingsStoreFixture m_settings;
    FakeAtomicFileWriter m_writer;
    TranscriptionHistory m_history { m_settings.clock, m_settings.files, m_writer };
    HistorySelection m_selection;
    FakePasteboard m_pasteboard;
    TemplatesModel m_model { m_history, m_settings.store, m_selection, m_pasteboard };
    ViewTexts m_texts { m_settings.store, PlatformTexts::forLinux() };
};

#pragma once

#include "Support/FakeFlowCollaborators.h"
#include "Support/ScriptedOperation.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/Health/HealthModel.h"
#include "TolmiApp/Shell/ViewTexts.h"

/// What the health workspace needs, on a simulated machine. Initially all checks pass and the interface is in
/// English.
class HealthFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(HealthModel *model READ model CONSTANT)
    Q_PROPERTY(ViewTexts *texts READ texts CONSTANT)
    Q_PROPERTY(bool isMicrophoneDenied MEMBER m_isMicrophoneDenied)
    Q_PROPERTY(bool isModelThere MEMBER m_isModelThere)
    /// How often Ollama was probed.
    Q_PROPERTY(int probeCount READ probeCount)

public:
    HealthFixture();

    HealthModel *model() { return m_model.get(); }
    ViewTexts *texts() { return &m_texts; }
    int probeCount() const { return m_probeCount; }

    /// Answers the oldest pending probe.
    Q_INVOKABLE void answerProbe(bool isReachable) { m_probe.answer(isReachable); }
    Q_INVOKABLE void speak(const QString &language);
    /// Turns refinement off.
    Q_INVOKABLE void disableRefinement() { m_settings.store.setRefinementEnabled(false); }
    /// Makes the application active.
    Q_INVOKABLE void activate() { Q_EMIT m_application.didBecomeActive(); }

private:
    StudioHealthCheckService service();
    Task<bool> probe();

    SettingsStoreFixture m_settings;
    FlowJournal m_journal;
    FakeApplication m_application { m_journal };
    bool m_isMicrophoneDenied = false;
    bool m_isModelThere = true;
    int m_probeCount = 0;
    ScriptedOperation<bool> m_probe;
    std::unique_ptr<HealthModel> m_model;
    ViewTexts m_texts { m_settings.store, PlatformTexts::forLinux() };
};

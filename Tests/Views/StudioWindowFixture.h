#pragma once

#include "Support/FakeFlowCollaborators.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

/// The Studio's model with a fake platform. Every workspace has a plain object as its model, except the
/// health checks, which have none.
class StudioWindowFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject *model READ model CONSTANT)
    Q_PROPERTY(QObject *texts READ texts CONSTANT)
    /// How many models of workspaces and wizards exist now.
    Q_PROPERTY(int liveModels READ liveModels)
    Q_PROPERTY(int quits READ quits)

public:
    StudioWindowFixture();

    QObject *model() { return &m_model; }
    QObject *texts() { return &m_texts; }
    int liveModels() const { return m_liveModels; }
    int quits() const { return m_quits; }

    Q_INVOKABLE void setTray(bool hasTray) {
        m_hasTray = hasTray;
        m_model.appear();
    }
    Q_INVOKABLE void tell(const QString &title, const QString &message) { m_model.tell(title, message); }
    Q_INVOKABLE void speakRomanian() { m_settings.store.setUiLanguage(AppLanguage::Romanian); }

private:
    StudioWorkspaces workspaces();
    StudioModelFactory counting();

    SettingsStoreFixture m_settings;
    FlowJournal m_journal;
    FakeApplication m_application { m_journal };
    StudioRouter m_router { m_application };
    int m_liveModels = 0;
    int m_quits = 0;
    bool m_hasTray = true;
    TolmiStudioWindowModel m_model;
    ViewTexts m_texts { m_settings.store, PlatformTexts::forLinux() };
};

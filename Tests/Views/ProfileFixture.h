#pragma once

#include "Support/ProfileModelFixture.h"
#include "TolmiApp/Shell/ViewTexts.h"

/// The profile workspace's model with a fake platform, for tests written in QML. The interface is in English.
class ProfileFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(ProfileWorkspaceModel *model READ model CONSTANT)
    Q_PROPERTY(QObject *texts READ texts CONSTANT)

public:
    ProfileFixture() { m_place.open(); }

    ProfileWorkspaceModel *model() { return &*m_place.model; }
    QObject *texts() { return &m_texts; }

    Q_INVOKABLE void setLanguage(const QString &code) {
        m_place.store.setUiLanguage(rawValueOrDefault<AppLanguage>(code));
    }
    Q_INVOKABLE void useCustomAvatar() { m_place.useCustomAvatar(); }
    Q_INVOKABLE void addDictation() { m_place.addDictation(); }
    Q_INVOKABLE void grantEverything();
    Q_INVOKABLE void completeOnboarding() { m_place.store.markOnboardingCompleted(); }
    /// Answers the open panel; an empty path cancels it.
    Q_INVOKABLE void choose(const QString &path);
    Q_INVOKABLE int panelCount() const { return int(m_place.panel.requests.size()); }
    Q_INVOKABLE int resumeCount() const { return m_place.resumeCount; }

private:
    ProfileModelFixture m_place;
    ViewTexts m_texts { m_place.store, PlatformTexts::forLinux() };
};

#pragma once

#include "Support/FakePasteboard.h"
#include "Support/FlowManagerFixture.h"
#include "TolmiApp/Popup/MenuBarPopupModel.h"
#include "TolmiApp/Shell/ViewTexts.h"

/// The popup's model with a fake platform, for tests written in QML. The interface is in English and
/// refinement is off.
class PopupFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(MenuBarPopupModel *model READ model CONSTANT)
    Q_PROPERTY(QObject *texts READ texts CONSTANT)
    /// The exits used, in order.
    Q_PROPERTY(QStringList ways MEMBER m_ways NOTIFY waysChanged)

public:
    PopupFixture();

    MenuBarPopupModel *model() { return &m_model; }
    QObject *texts() { return &m_texts; }

    /// Sets up the flow, with or without the right to watch keys.
    Q_INVOKABLE void start(bool isTrusted);
    Q_INVOKABLE void record() { m_flow.record(); }
    Q_INVOKABLE void transcribe() { m_flow.transcribe(); }
    Q_INVOKABLE void dictate(const QString &text) { m_flow.dictate(text); }
    Q_INVOKABLE void setLanguage(const QString &code) { m_flow.store.setLanguage(code); }
    Q_INVOKABLE QString language() const { return m_flow.store.language(); }
    Q_INVOKABLE bool refinementEnabled() const { return m_flow.store.refinementEnabled(); }
    Q_INVOKABLE void setRefinementEnabled(bool isEnabled) { m_flow.store.setRefinementEnabled(isEnabled); }
    Q_INVOKABLE void setName(const QString &name) { m_flow.store.setProfileDisplayName(name); }
    Q_INVOKABLE void setUpdatesPossible() { m_model.setCanCheckForUpdates(true); }
    /// How often the user was prompted for the right to watch keys.
    Q_INVOKABLE int promptCount() const;
    /// The plain text on the clipboard.
    Q_INVOKABLE QString copiedText() const;

Q_SIGNALS:
    void waysChanged();

private:
    std::function<void()> way(const QString &name);

    FlowManagerFixture m_flow;
    FakePasteboard m_pasteboard;
    QStringList m_ways;
    MenuBarPopupModel m_model;
    ViewTexts m_texts { m_flow.store, PlatformTexts::forLinux() };
};

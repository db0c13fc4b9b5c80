#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Navigation/HistorySelection.h"
#include "TolmiApp/Navigation/StudioRouting.h"

#include <QVariantList>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class SettingsStore;
class TolmiStudioWindowModel;

/// Makes the model of something that the Studio shows, each time it is shown; the window is given so that the
/// model can navigate in it.
using StudioModelFactory = std::function<std::unique_ptr<QObject>(TolmiStudioWindowModel &)>;
/// How the models of the workspaces are made. One that is missing shows its title only.
using StudioWorkspaces = std::map<StudioDestination, StudioModelFactory>;

/// What the Studio's window knows beside its workspaces. Main thread only.
class TolmiStudioWindowModel final : public ObservableObject {
    Q_OBJECT
    /// Whether the wizard of the first start lies over the workspace.
    TOLMI_PUBLISHED(bool, isShowingOnboarding, setIsShowingOnboarding)
    /// A notice over whatever is shown, until the user has read it.
    TOLMI_PUBLISHED_READONLY(bool, showingNotice, setShowingNotice)
    TOLMI_PUBLISHED_READONLY(QString, noticeTitle, setNoticeTitle)
    TOLMI_PUBLISHED_READONLY(QString, noticeMessage, setNoticeMessage)
    /// Whether the window offers to end the program, which is otherwise done at the status item.
    TOLMI_PUBLISHED_READONLY(bool, offersToQuit, setOffersToQuit)
    /// The name of the workspace that is shown; an empty or unknown one is not taken.
    Q_PROPERTY(QString selection READ selection WRITE setSelection NOTIFY selectionChanged)
    /// The workspaces in their order, each with `name`, `titleKey` (of its text) and `symbol`.
    Q_PROPERTY(QVariantList destinations READ destinations CONSTANT)
    /// Whether there is a wizard to show.
    Q_PROPERTY(bool hasOnboarding READ hasOnboarding CONSTANT)

public:
    /// What the window shows and can do.
    struct Content {
        StudioWorkspaces workspaces {};
        /// None presents no wizard.
        StudioModelFactory onboarding {};
        /// Whether the desktop shows the status item.
        std::function<bool()> hasStatusItem = [] { return true; };
        /// Ends the program.
        std::function<void()> quit {};
    };

    /// `settings` and `router` outlive the model.
    TolmiStudioWindowModel(const SettingsStore &settings, StudioRouter &router, Content content);

    StudioRouter &router() { return m_router; }
    /// The history entry that the workspaces share.
    HistorySelection &historySelection() { return m_historySelection; }

    /// The workspace that the sidebar marks; never absent.
    std::optional<StudioDestination> destinationSelection() const { return m_router.destination(); }
    /// An absent one changes nothing, so that there always is a workspace.
    void setDestinationSelection(std::optional<StudioDestination> destination);

    QString selection() const { return rawValue(m_router.destination()); }
    void setSelection(const QString &name) {
        setDestinationSelection(caseOfRawValue<StudioDestination>(name));
    }
    static QVariantList destinations();
    bool hasOnboarding() const { return bool(m_content.onboarding); }

    /// The window appears. The first time the wizard is opened if the user has not been through it.
    void appear();

    /// Tells the user of something that belongs to no workspace that is shown. It waits for the window.
    void tell(const QString &title, const QString &message);
    Q_INVOKABLE void dismissNotice() { setShowingNotice(false); }

    /// A new model for the workspace of that name, which goes after `owner`; null when there is none.
    Q_INVOKABLE QObject *makeWorkspaceModel(const QString &name, QObject *owner);
    /// A new model for the wizard; see above.
    Q_INVOKABLE QObject *makeOnboardingModel(QObject *owner);
    /// Ends the program.
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void selectionChanged();

private:
    QObject *make(const StudioModelFactory &factory, QObject *owner);

    const SettingsStore &m_settings;
    StudioRouter &m_router;
    const Content m_content;
    HistorySelection m_historySelection;
    bool m_hasEvaluatedOnboardingOnLaunch = false;
};

#include "Main/Workspaces.h"

#include "Main/Adapters.h"
#include "Main/Diagnosis.h"
#include "TolmiApp/CommandCenter/CommandCenterModel.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/DictationLive/DictationLiveModel.h"
#include "TolmiApp/Health/HealthModel.h"
#include "TolmiApp/History/HistoryWorkspaceModel.h"
#include "TolmiApp/Onboarding/OnboardingWizardModel.h"
#include "TolmiApp/Profile/ProfileWorkspaceModel.h"
#include "TolmiApp/SettingsPage/SettingsModel.h"
#include "TolmiApp/Templates/TemplatesModel.h"

#include <QLocale>

namespace {
/// Dates as this process' time zone has them, with the hours that the user's system counts.
DateTexts systemDates() {
    const QString time = QLocale::system().timeFormat(QLocale::ShortFormat);
    return DateTexts({ {}, time.contains(QLatin1String("AP"), Qt::CaseInsensitive) });
}

std::function<void()> openingWizard(TolmiStudioWindowModel &studio) {
    return [&studio] { studio.setIsShowingOnboarding(true); };
}

std::function<void(StudioDestination)> navigating(TolmiStudioWindowModel &studio) {
    return [&studio](StudioDestination destination) { studio.setDestinationSelection(destination); };
}
} // namespace

Workspaces::Workspaces(const Interface::Program &program)
    : m_program(program)
    , m_avatarEditor(program.flow->settings(), program.adapters.openPanel,
          ProfileAvatarStorage(
              { program.adapters.fileManager, program.adapters.fileListing, program.adapters.fileWriter }))
    , m_dates(systemDates()) { }

TolmiStudioWindowModel::Content Workspaces::content() {
    using Destination = StudioDestination;
    return { .workspaces = { { Destination::CommandCenter, [this](auto &in) { return commandCenter(in); } },
                 { Destination::Profile, [this](auto &in) { return profile(in); } },
                 { Destination::DictationLive, [this](auto &) { return dictationLive(); } },
                 { Destination::History, [this](auto &in) { return history(in); } },
                 { Destination::Templates, [this](auto &in) { return templates(in); } },
                 { Destination::Health, [this](auto &) { return health(); } },
                 { Destination::Settings, [this](auto &in) { return settings(in); } } },
        .onboarding = [this](auto &in) { return onboarding(in); },
        .quit = m_program.quit };
}

std::unique_ptr<QObject> Workspaces::commandCenter(TolmiStudioWindowModel &studio) {
    Adapters &adapters = m_program.adapters;
    return std::make_unique<CommandCenterModel>(m_program.flow, *m_program.history,
        CommandCenterModel::Platform { adapters.clock, adapters.microphone },
        CommandCenterModel::Navigation { navigating(studio), openingWizard(studio) });
}

std::unique_ptr<QObject> Workspaces::profile(TolmiStudioWindowModel &studio) {
    return std::make_unique<ProfileWorkspaceModel>(m_program.flow,
        ProfileWorkspaceModel::Dependencies {
            *m_program.history, m_program.adapters.microphone, m_avatarEditor, openingWizard(studio) });
}

std::unique_ptr<QObject> Workspaces::dictationLive() {
    Adapters &adapters = m_program.adapters;
    return std::make_unique<DictationLiveModel>(
        m_program.flow, DictationLiveModel::Platform { adapters.clock, adapters.pasteboard });
}

std::unique_ptr<QObject> Workspaces::history(TolmiStudioWindowModel &studio) {
    Adapters &adapters = m_program.adapters;
    return std::make_unique<HistoryWorkspaceModel>(
        HistoryWorkspaceModel::Dependencies {
            *m_program.history, m_program.flow->settings(), studio.historySelection() },
        HistoryWorkspacePlatform { adapters.clock, adapters.fileManager, adapters.fileWriter,
            adapters.pasteboard, adapters.audioPlayers, adapters.fileViewer, adapters.savePanel, m_dates,
            [&studio](const QString &title, const QString &message) { studio.tell(title, message); } },
        PlatformTexts::forLinux());
}

std::unique_ptr<QObject> Workspaces::templates(TolmiStudioWindowModel &studio) {
    return std::make_unique<TemplatesModel>(*m_program.history, m_program.flow->settings(),
        studio.historySelection(), m_program.adapters.pasteboard);
}

std::unique_ptr<QObject> Workspaces::health() {
    return std::make_unique<HealthModel>(
        m_program.flow->settings(), m_program.adapters.application, healthChecks(m_program.adapters));
}

std::unique_ptr<QObject> Workspaces::settings(TolmiStudioWindowModel &studio) {
    return std::make_unique<SettingsModel>(SettingsModel::Dependencies { m_program.flow->settings(),
        m_program.updater, m_program.adapters.sounds, QLocale::system(), navigating(studio) });
}

std::unique_ptr<QObject> Workspaces::onboarding(TolmiStudioWindowModel &studio) {
    Adapters &adapters = m_program.adapters;
    return std::make_unique<OnboardingWizardModel>(m_program.flow, *m_program.history,
        OnboardingWizardModel::Platform {
            adapters.clock, adapters.microphone, adapters.accessibility, adapters.fileManager },
        OnboardingWizardModel::Host { PlatformTexts::forLinux(),
            { [this](auto onFailure) { m_avatarEditor.importAvatar(std::move(onFailure)); },
                [this] { return m_avatarEditor.removeAvatar(); } },
            [&studio] { studio.setIsShowingOnboarding(false); } });
}

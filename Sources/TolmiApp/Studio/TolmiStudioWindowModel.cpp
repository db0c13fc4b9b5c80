#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

#include "TolmiApp/Settings/SettingsStore.h"

TolmiStudioWindowModel::TolmiStudioWindowModel(
    const SettingsStore &settings, StudioRouter &router, Content content)
    : m_settings(settings)
    , m_router(router)
    , m_content(std::move(content)) {
    connect(&m_router, &StudioRouter::destinationChanged, this, &TolmiStudioWindowModel::selectionChanged);
}

void TolmiStudioWindowModel::setDestinationSelection(std::optional<StudioDestination> destination) {
    if (destination)
        m_router.setDestination(*destination);
}

QVariantList TolmiStudioWindowModel::destinations() {
    QVariantList list;
    for (const StudioDestination destination : allCases<StudioDestination>()) {
        list.append(QVariantMap { { QStringLiteral("name"), rawValue(destination) },
            { QStringLiteral("titleKey"), L10n::rawValue(titleKey(destination)) },
            { QStringLiteral("symbol"), icon(destination) } });
    }
    return list;
}

void TolmiStudioWindowModel::appear() {
    setOffersToQuit(!m_content.hasStatusItem());
    if (std::exchange(m_hasEvaluatedOnboardingOnLaunch, true))
        return;
    if (m_settings.shouldShowOnboardingReminder())
        setIsShowingOnboarding(true);
}

void TolmiStudioWindowModel::tell(const QString &title, const QString &message) {
    setNoticeTitle(title);
    setNoticeMessage(message);
    setShowingNotice(true);
}

QObject *TolmiStudioWindowModel::makeWorkspaceModel(const QString &name, QObject *owner) {
    const auto destination = caseOfRawValue<StudioDestination>(name);
    const auto factory = destination ? m_content.workspaces.find(*destination) : m_content.workspaces.end();
    return factory == m_content.workspaces.end() ? nullptr : make(factory->second, owner);
}

QObject *TolmiStudioWindowModel::makeOnboardingModel(QObject *owner) {
    return hasOnboarding() ? make(m_content.onboarding, owner) : nullptr;
}

void TolmiStudioWindowModel::quit() {
    m_content.quit();
}

QObject *TolmiStudioWindowModel::make(const StudioModelFactory &factory, QObject *owner) {
    QObject *model = factory(*this).release();
    model->setParent(this);
    // A view that goes with its owner goes a turn later, and must find its model until then.
    connect(owner, &QObject::destroyed, model, &QObject::deleteLater);
    return model;
}

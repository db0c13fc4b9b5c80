#pragma once

#include "Support/FakeSystemSounds.h"
#include "Support/FakeUpdaterController.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/SettingsPage/SettingsModel.h"

/// The settings workspace's model over a platform in memory, with the interface in English. The program has
/// an updater if `isConfigured`.
struct SettingsModelFixture : SettingsStoreFixture {
    explicit SettingsModelFixture(bool isConfigured = true, const QLocale &locale = QLocale(QLocale::English))
        : updater(
            bundleOf(isConfigured), [this] { return controller; }, clock)
        , model({ store, updater, sounds, locale,
              [this](StudioDestination destination) { destinations.append(destination); } }) {
        store.setUiLanguage(AppLanguage::English);
        sounds.names = { QStringLiteral("Hero"), QStringLiteral("Funk") };
    }

    static BundleInfo bundleOf(bool isConfigured) {
        BundleInfo bundle;
        if (isConfigured)
            bundle.infoDictionary
                = { { QStringLiteral("SUFeedURL"), QStringLiteral("https://example.org/feed.xml") },
                      { QStringLiteral("SUPublicEDKey"), QStringLiteral("key") } };
        return bundle;
    }

    FakeSystemSounds sounds;
    std::shared_ptr<FakeUpdaterController> controller = std::make_shared<FakeUpdaterController>();
    AppUpdater updater;
    /// Where the user was led, in order.
    QList<StudioDestination> destinations;
    SettingsModel model;
};

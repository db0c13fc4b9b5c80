#pragma once

#include "Foundation/ObservableObject.h"
#include "Platform/BundleInfo.h"
#include "Platform/Updater.h"

#include <memory>
#include <optional>

class Clock;

/// Runs the updater if the program was built with one, and exposes its state to views. Main thread only.
class AppUpdater final : public ObservableObject {
    Q_OBJECT
    /// Whether the program was built with a feed and a public key.
    TOLMI_PUBLISHED_READONLY(bool, isConfigured, setIsConfigured)
    /// Whether a check may be started now.
    TOLMI_PUBLISHED_READONLY(bool, canCheckForUpdates, setCanCheckForUpdates)
    /// The controller's setting; views may set it.
    TOLMI_PUBLISHED(bool, automaticallyChecksForUpdates, setAutomaticallyChecksForUpdates)

public:
    using MakeController = std::function<std::shared_ptr<UpdaterController>()>;

    /// Calls `makeController` once if the bundle is configured. `clock` must outlive the updater.
    AppUpdater(const BundleInfo &bundle, const MakeController &makeController, Clock &clock);

    /// Absent if not configured.
    const std::shared_ptr<UpdaterController> &updaterController() const { return m_updaterController; }

    /// Starts a check with visible progress; does nothing if not configured.
    Q_INVOKABLE void checkForUpdates();

private:
    struct Configuration;
    static Configuration sparkleConfiguration(const BundleInfo &bundle);

    void switchOff();
    void startUpdater(const MakeController &makeController);
    UpdaterController::Observer assignment(
        bool (UpdaterController::*read)() const, void (AppUpdater::*assign)(bool));
    void forwardToController(bool isAutomatic);

    Clock &m_clock;
    std::shared_ptr<UpdaterController> m_updaterController;
    std::optional<bool> m_lastForwarded;
};

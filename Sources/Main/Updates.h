#pragma once

#include "Foundation/SerialQueue.h"
#include "TolmiApp/Updates/AppUpdater.h"
#include "TolmiApp/Updates/UpdatePrompt.h"

class SettingsStore;
class UpdateDialogModel;
class UpdateWindow;
struct Adapters;
struct UpdateSource;

/// Builds and owns the updater and its window. Nothing is fetched or loaded unless the program was built with
/// a feed.
class Updates {
public:
    /// Runs work when a window may open that nobody has asked for.
    using OpenUnasked = std::function<void(std::function<void()>)>;

    /// The first three outlive this.
    Updates(
        Adapters &adapters, const BundleInfo &bundle, const SettingsStore &settings, OpenUnasked openUnasked);
    ~Updates();

    AppUpdater &updater() { return m_updater; }

private:
    UpdateSource source() const;
    std::shared_ptr<UpdaterController> makeController();

    Adapters &m_adapters;
    const BundleInfo &m_bundle;
    const SettingsStore &m_settings;
    const OpenUnasked m_openUnasked;
    SerialQueue m_files { QStringLiteral("Tolmi.Updates.files") };
    UpdatePrompt m_prompt;
    std::unique_ptr<UpdateDialogModel> m_dialog;
    std::unique_ptr<UpdateWindow> m_window;
    AppUpdater m_updater;
};

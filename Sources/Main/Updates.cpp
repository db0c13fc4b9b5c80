#include "Main/Updates.h"

#include "Main/Adapters.h"
#include "Platform/Desktop/UserFolders.h"
#include "Text/Text.h"
#include "TolmiApp/Shell/ViewAppearance.h"
#include "TolmiApp/Updates/AppcastUpdater.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"
#include "TolmiApp/Updates/UpdateWindow.h"

Updates::Updates(
    Adapters &adapters, const BundleInfo &bundle, const SettingsStore &settings, OpenUnasked openUnasked)
    : m_adapters(adapters)
    , m_bundle(bundle)
    , m_settings(settings)
    , m_openUnasked(std::move(openUnasked))
    , m_updater(
          bundle, [this] { return makeController(); }, adapters.clock) { }

Updates::~Updates() = default;

UpdateSource Updates::source() const {
    const auto infoValue = [this](const char *key) {
        return Text::trimmed(m_bundle.infoDictionary.value(QLatin1String(key)).toString());
    };
    UpdateSource source;
    source.feedURL = QUrl(infoValue("SUFeedURL"));
    source.publicKey = infoValue("SUPublicEDKey");
    source.installedVersion = infoValue("CFBundleShortVersionString");
    source.downloadsDirectory = downloadsDirectory();
    return source;
}

std::shared_ptr<UpdaterController> Updates::makeController() {
    const UpdateSource from = source();
    m_dialog = std::make_unique<UpdateDialogModel>(m_prompt, m_settings, from.installedVersion,
        [this](const FileURL &file) { m_adapters.fileViewer.selectFile(file); });
    m_window = std::make_unique<UpdateWindow>(
        *m_dialog, [this](QQmlEngine &engine) { new ViewAppearance(engine, m_settings, m_adapters.look); },
        m_openUnasked);
    return AppcastUpdater::create(
        { m_adapters.http, m_adapters.defaults, m_adapters.clock, m_adapters.fileManager,
            m_adapters.fileListing, m_adapters.fileWriter, m_adapters.signatures, m_files },
        from, m_prompt);
}

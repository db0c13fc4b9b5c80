#include "Main/Interface.h"

#include "Main/Adapters.h"
#include "Main/Workspaces.h"
#include "Platform/Desktop/QtStatusItem.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Navigation/StudioRouting.h"
#include "TolmiApp/Popup/MenuBarPopupModel.h"
#include "TolmiApp/Popup/MenuBarPopupWindow.h"
#include "TolmiApp/Popup/StatusItemController.h"
#include "TolmiApp/Popup/StatusItemImage.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Shell/ViewAppearance.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Studio/QuickStudioWindow.h"
#include "TolmiApp/Updates/AppUpdater.h"

namespace {
/// The popup with all that is made for it at the first press of the status item.
struct Popup {
    Popup(const Interface::Program &program, MenuBarPopupModel::Actions actions)
        : model(program.flow, program.adapters.pasteboard, std::move(actions))
        , texts(program.flow->settings(), PlatformTexts::forLinux())
        , window({ model, texts, program.adapters.floatingWindows, program.adapters.clock,
              [program](QQmlEngine &engine) {
                  new ViewAppearance(engine, program.flow->settings(), program.adapters.look);
              } }) { }

    MenuBarPopupModel model;
    ViewTexts texts;
    MenuBarPopupWindow window;
};
} // namespace

/// Declared in the order of construction, as everywhere in this folder.
struct Interface::Parts {
    explicit Parts(Program given);

    TolmiStudioWindowModel::Content studioContent();
    StatusItemController::Actions statusActions();
    MenuBarPopupModel::Actions popupActions();
    std::function<void()> opening(StudioDestination destination);
    void open(StudioDestination destination);
    void togglePopup();
    void tellWhetherUpdatesCanBeChecked();

    const Program program;
    Workspaces workspaces { program };
    StudioRouter router { program.adapters.application };
    TolmiStudioWindowModel studioModel { program.flow->settings(), router, studioContent() };
    QuickStudioWindow studio { studioModel, program.flow->settings(), program.adapters.look };
    std::unique_ptr<Popup> popup;
    QtStatusItem statusItem { statusItemImage(program.adapters.look.panelAppearance()),
        program.adapters.statusTrays };
    StatusItemController status { statusItem, program.flow, statusActions() };
};

Interface::Parts::Parts(Program given)
    : program(std::move(given)) {
    QObject::connect(&program.updater, &AppUpdater::canCheckForUpdatesChanged, &status,
        [this] { tellWhetherUpdatesCanBeChecked(); });
    tellWhetherUpdatesCanBeChecked();
    QObject::connect(&program.adapters.look, &DesktopLook::changed, &status,
        [this] { statusItem.setIcon(statusItemImage(program.adapters.look.panelAppearance())); });
}

TolmiStudioWindowModel::Content Interface::Parts::studioContent() {
    TolmiStudioWindowModel::Content content = workspaces.content();
    content.hasStatusItem = [this] { return statusItem.availability().isAvailable(); };
    return content;
}

std::function<void()> Interface::Parts::opening(StudioDestination destination) {
    return [this, destination] { open(destination); };
}

StatusItemController::Actions Interface::Parts::statusActions() {
    return { .togglePopup = [this] { togglePopup(); },
        .openStudio = opening(StudioDestination::CommandCenter),
        .openSettings = opening(StudioDestination::Settings),
        .checkForUpdates = [this] { program.updater.checkForUpdates(); },
        .quit = program.quit };
}

MenuBarPopupModel::Actions Interface::Parts::popupActions() {
    return { .openCommandCenter = opening(StudioDestination::CommandCenter),
        .openProfile = opening(StudioDestination::Profile),
        .openSettings = opening(StudioDestination::Settings),
        .checkForUpdates = [this] { program.updater.checkForUpdates(); },
        .quit = program.quit };
}

void Interface::Parts::open(StudioDestination destination) {
    router.open(destination, [this](const QString &id) {
        if (id == TolmiWindowID::studio)
            studio.show();
    });
}

void Interface::Parts::togglePopup() {
    if (!popup) {
        popup = std::make_unique<Popup>(program, popupActions());
        tellWhetherUpdatesCanBeChecked();
    }
    popup->window.toggle(statusItem.geometry());
}

void Interface::Parts::tellWhetherUpdatesCanBeChecked() {
    const bool canCheck = program.updater.canCheckForUpdates();
    status.setCanCheckForUpdates(canCheck);
    if (popup)
        popup->model.setCanCheckForUpdates(canCheck);
}

Interface::Interface(Program program)
    : m_parts(std::make_unique<Parts>(std::move(program))) { }

Interface::~Interface() = default;

Availability Interface::statusItemAvailability() const {
    return m_parts->statusItem.availability();
}

bool Interface::isInReach() const {
    return statusItemAvailability().isAvailable() || m_parts->studio.view() != nullptr;
}

void Interface::prepareStudio() {
    m_parts->studio.prepare();
}

void Interface::openStudio(StudioDestination destination) {
    m_parts->open(destination);
}

void Interface::openStudio() {
    m_parts->open(m_parts->router.destination());
}

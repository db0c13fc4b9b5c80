import QtQuick
import Tolmi

/// All of the Studio's window: the sidebar, and the workspace that is chosen in it over a slow backdrop.
FocusScope {
    id: studio

    required property TolmiStudioWindowModel model
    required property var texts
    /// What the window must not be smaller than for the workspace.
    readonly property size minimumSize: workspaceSize(model.selection)
    /// The files of the workspaces' views and of the wizard's.
    property var views: ({
            commandCenter: "StudioCommandCenterView.qml",
            profile: "ProfileWorkspaceView.qml",
            dictationLive: "StudioDictationLiveView.qml",
            history: "HistoryWorkspaceView.qml",
            templates: "StudioTemplatesView.qml",
            health: "StudioHealthView.qml",
            settings: "SettingsView.qml",
            onboarding: "OnboardingWizardView.qml"
        })
    /// Whether the workspace is there. A window has none while it is hidden, and may put it off until its first frame
    /// stands, in which it would not be seen yet: a workspace fades in.
    property bool hasWorkspace: true
    /// The workspace that is shown now.
    property StudioWorkspace workspace: null
    /// A dialog over a window takes the window's shortcuts away. Those of the Studio go on under the wizard, as
    /// shortcuts of the program while the Studio is the window in use.
    readonly property int shortcutContext: model.isShowingOnboarding ? Qt.ApplicationShortcut : Qt.WindowShortcut
    readonly property bool hasShortcuts: Window.active

    function workspaceSize(name: string): size {
        return name === "history" ? Qt.size(Metrics.sidebarWidth + 920, 620) : Qt.size(Metrics.sidebarWidth + 700, 600);
    }

    function unloadWorkspace() {
        // The wizard, if it is there, keeps the keyboard.
        sidebar.focus = true;
        workspace = null;
        // Those that still fade out, too.
        Array.from(detail.children).forEach(each => each.destroy());
    }

    function showWorkspace() {
        if (!hasWorkspace)
            return;
        const old = workspace;
        const hadFocus = old !== null && old.activeFocus;
        const destination = model.destinations.find(each => each.name === model.selection);
        workspace = place.createObject(detail, {
            name: destination.name,
            titleKey: destination.titleKey,
            view: Qt.resolvedUrl(views[destination.name])
        });
        if (old !== null)
            old.leave();
        if (hadFocus)
            sidebar.forceActiveFocus(Qt.OtherFocusReason);
    }

    focus: true
    Accessible.role: Accessible.Client
    Accessible.name: texts.appTitle
    onHasWorkspaceChanged: {
        if (hasWorkspace)
            showWorkspace();
        else
            unloadWorkspace();
    }
    Component.onCompleted: showWorkspace()

    Connections {
        function onSelectionChanged() {
            studio.showWorkspace();
        }

        target: studio.model
    }
    AnimatedBackdropView {
        anchors.fill: parent
    }
    StudioSidebar {
        id: sidebar

        height: parent.height
        model: studio.model
        texts: studio.texts
        focus: true
    }
    Item {
        id: detail

        x: sidebar.width
        width: parent.width - x
        height: parent.height
        clip: true
    }
    Component {
        id: place

        StudioWorkspace {
            required property string titleKey

            model: studio.model
            texts: studio.texts
            title: studio.texts[titleKey]
        }
    }
    SheetPopup {
        id: sheet

        title: studio.texts.onboardingTitle
        padding: 0
        closePolicy: SheetPopup.NoAutoClose
        visible: studio.model.isShowingOnboarding && studio.model.hasOnboarding
        onClosed: studio.forceActiveFocus(Qt.PopupFocusReason)

        contentItem: Loader {
            active: sheet.visible
            focus: true

            sourceComponent: ModelLoader {
                view: Qt.resolvedUrl(studio.views.onboarding)
                texts: studio.texts
                makeModel: owner => studio.model.makeOnboardingModel(owner)
            }
        }
    }
    StudioDialog {
        objectName: "noticeDialog"
        visible: studio.model.showingNotice
        title: studio.model.noticeTitle
        message: studio.model.noticeMessage
        confirmText: studio.texts.commonOK
        onClosed: studio.model.dismissNotice()
    }
    Repeater {
        model: studio.model.destinations

        Item {
            required property int index
            required property var modelData

            Shortcut {
                sequence: "Ctrl+" + (index + 1)
                context: studio.shortcutContext
                enabled: studio.hasShortcuts
                onActivated: studio.model.selection = modelData.name
            }
        }
    }
    Shortcut {
        sequence: "Ctrl+,"
        context: studio.shortcutContext
        enabled: studio.hasShortcuts
        onActivated: studio.model.selection = "settings"
    }
    Shortcut {
        sequence: "Ctrl+Q"
        context: studio.shortcutContext
        enabled: studio.hasShortcuts
        onActivated: studio.model.quit()
    }
    Shortcut {
        sequence: "Ctrl+W"
        context: studio.shortcutContext
        enabled: studio.hasShortcuts
        onActivated: studio.Window.window.close()
    }
}

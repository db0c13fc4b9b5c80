import QtQuick
import Tolmi

/// What opens from the status item: the state of dictation, the daily controls and the ways into the Studio.
FocusScope {
    id: view

    required property MenuBarPopupModel model
    required property var texts
    /// How far the window reaches out of the popup on every side; nothing but the shadow is seen there.
    property int windowMargin: 0

    /// The user is done here.
    signal closeRequested

    implicitWidth: 320
    implicitHeight: sections.height
    width: implicitWidth
    height: implicitHeight
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: texts.menuBarTitle
    Keys.onEscapePressed: closeRequested()

    /// Before anything that takes the user elsewhere.
    function leaveTo(action: var) {
        closeRequested();
        action();
    }

    SoftShadow {
        anchors.fill: parent
        visible: view.windowMargin > 0
        radius: Metrics.panelRadius
        sigma: 14
        offsetY: 8
        color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.26, 0, 0, 0, 0.5)
    }
    Plate {
        anchors.fill: parent
        radius: Metrics.panelRadius
        fill: TolmiPalette.faded(TolmiPalette.ink, 0.95)
        endFill: TolmiPalette.faded(TolmiPalette.graphite, 0.95)
        border: TolmiPalette.panelStroke
        hairline: TolmiPalette.panelEdgeStroke
    }
    Column {
        id: sections

        width: parent.width

        PopupHeader {
            width: parent.width
            model: view.model
            texts: view.texts
            onProfileRequested: view.leaveTo(() => view.model.openProfile())
        }
        SectionDivider { }
        PopupStatus {
            width: parent.width
            model: view.model
            texts: view.texts
        }
        SectionDivider { }
        PopupControls {
            width: parent.width
            model: view.model
            texts: view.texts
            listMargin: view.windowMargin + 8
        }
        SectionDivider { }
        Actions {
            PopupActionRow {
                objectName: "openStudio"
                symbol: "rectangle.on.rectangle"
                text: view.texts.menuBarOpenStudio
                onClicked: view.leaveTo(() => view.model.openCommandCenter())
            }
            PopupActionRow {
                objectName: "settings"
                symbol: "gear"
                text: view.texts.menuBarSettings
                shortcut: view.texts.settingsShortcut
                onClicked: view.leaveTo(() => view.model.openSettings())
            }
            PopupActionRow {
                objectName: "checkForUpdates"
                symbol: "arrow.triangle.2.circlepath"
                text: view.texts.menuBarCheckForUpdates
                enabled: view.model.canCheckForUpdates
                onClicked: view.leaveTo(() => view.model.checkForUpdates())
            }
        }
        SectionDivider { }
        Actions {
            PopupActionRow {
                objectName: "quit"
                symbol: "power"
                text: view.texts.menuBarQuit
                shortcut: view.texts.quitShortcut
                onClicked: view.model.quit()
            }
        }
    }

    component SectionDivider: Divider {
        x: 1
        width: view.width - 2
    }
    component Actions: Column {
        padding: Metrics.popupPadding
    }
}

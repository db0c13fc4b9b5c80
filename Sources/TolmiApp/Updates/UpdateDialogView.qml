import QtQuick
import Tolmi

/// The update dialog: progress or outcome, and one or two buttons.
FocusScope {
    id: view

    required property UpdateDialogModel model

    readonly property bool isBusy: model.phase === UpdatePrompt.Checking || model.phase === UpdatePrompt.Downloading
    readonly property int padding: 20

    implicitWidth: 460
    implicitHeight: column.implicitHeight + 2 * padding
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: model.title
    Accessible.description: model.description
    Keys.onEscapePressed: model.dismiss()
    Keys.onPressed: event => KeyPress.pressed(event, answer)
    Component.onCompleted: takeFocus()

    function symbolOf(phase: int): string {
        switch (phase) {
        case UpdatePrompt.UpToDate:
            return "checkmark.seal.fill";
        case UpdatePrompt.Failed:
            return "exclamationmark.triangle.fill";
        case UpdatePrompt.Downloaded:
            return "checkmark.circle.fill";
        default:
            return "arrow.triangle.2.circlepath";
        }
    }
    /// Ignored while busy, because a key that opened the dialog and is still held must not cancel it.
    function answer() {
        if (!isBusy)
            (action.visible ? action : dismissal).clicked();
    }
    function takeFocus() {
        (isBusy ? rest : action.visible ? action : dismissal).forceActiveFocus(Qt.TabFocusReason);
    }

    Connections {
        target: view.model

        function onPhaseChanged() {
            view.takeFocus();
        }
    }
    /// Has the focus while busy.
    Item {
        id: rest
    }
    Rectangle {
        anchors.fill: parent
        color: TolmiPalette.ink
    }
    Plate {
        anchors.fill: parent
        radius: 0
        fill: TolmiPalette.panelFill
        endFill: TolmiPalette.panelSecondaryFill
        gradientEnd: Qt.point(0.35, 1)
    }
    Plate {
        x: view.padding
        y: view.padding
        width: 40
        height: 40
        radius: 20
        fill: TolmiPalette.chipFill
        border: TolmiPalette.chipStroke

        Spinner {
            anchors.centerIn: parent
            width: 20
            height: 20
            visible: view.model.phase === UpdatePrompt.Checking
        }
        Symbol {
            anchors.centerIn: parent
            visible: view.model.phase !== UpdatePrompt.Checking
            name: view.symbolOf(view.model.phase)
            size: 20
            color: TolmiPalette.primaryText
        }
    }
    Column {
        id: column

        x: view.padding + 40 + 16
        y: view.padding
        width: parent.width - x - view.padding
        spacing: 12

        Column {
            width: parent.width
            // A title alone is vertically centred beside the symbol.
            topPadding: view.isBusy ? 10 : 0
            spacing: 4

            StudioText {
                width: parent.width
                role: Typography.head
                text: view.model.title
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            StudioText {
                width: parent.width
                text: view.model.problem
                visible: text !== ""
                wrapMode: Text.Wrap
            }
            StudioText {
                width: parent.width
                text: view.model.hint
                visible: text !== ""
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
            }
        }
        Column {
            width: parent.width
            visible: view.model.releaseNotes !== ""
            spacing: 6

            StudioText {
                role: Typography.sectionHeader
                text: view.model.releaseNotesLabel
                color: TolmiPalette.secondaryText
            }
            StudioTextArea {
                width: parent.width
                height: 150
                isReadOnly: true
                label: view.model.releaseNotesLabel
                value: view.model.releaseNotes
            }
        }
        Row {
            width: parent.width
            height: 16
            visible: view.model.phase === UpdatePrompt.Downloading
            spacing: 10

            StudioProgressBar {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - parent.spacing - share.width
                label: view.model.progressLabel
                value: view.model.progress
            }
            StudioText {
                id: share

                width: 40
                height: 16
                role: Typography.caption
                text: view.model.progressText
                color: TolmiPalette.secondaryText
                horizontalAlignment: Text.AlignRight
            }
        }
        TextBox {
            width: parent.width
            visible: text !== ""
            role: Typography.monospace
            label: view.model.filePathLabel
            text: view.model.filePath
        }
        Row {
            anchors.right: parent.right
            topPadding: 4
            spacing: 8

            StudioButton {
                id: dismissal

                tone: StudioButton.Muted
                text: view.model.dismissText
                onClicked: view.model.dismiss()
            }
            StudioButton {
                id: action

                text: view.model.actionText
                visible: text !== ""
                onClicked: view.model.act()
            }
        }
    }
}

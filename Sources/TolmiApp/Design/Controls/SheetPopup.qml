import QtQuick
import QtQuick.Templates as T

/// A modal sheet over a window.
T.Dialog {
    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 20
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.dialogIn
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "scale"
            from: 0.98
            to: 1
            duration: Motion.dialogIn
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Motion.dialogOut
        }
    }
    background: MenuPlate {
        cornerRadius: Metrics.dialogRadius
        isDialog: true
    }
    T.Overlay.modal: Rectangle {
        color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.18, 0, 0, 0, 0.42)
    }
}

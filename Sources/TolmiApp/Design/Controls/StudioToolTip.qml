import QtQuick
import QtQuick.Templates as T
import Tolmi

/// The tool tip of a control.
T.ToolTip {
    id: toolTip

    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 6 : 0
    implicitWidth: Math.min(320, label.implicitWidth + 22)
    implicitHeight: label.implicitHeight + 12
    margins: 6
    delay: 600
    timeout: 8000
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.popup
            easing.type: Easing.OutCubic
        }
    }
    background: Plate {
        radius: Metrics.menuItemRadius
        material: TolmiPalette.menuMaterial
        border: TolmiPalette.chipStroke
    }
    contentItem: Item {
        StudioText {
            id: label

            x: 11
            y: 6
            width: parent.width - 22
            role: Typography.caption
            text: toolTip.text
            wrapMode: Text.Wrap
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A switch without a text of its own: `label` names it for those who cannot see what stands beside it.
T.Switch {
    id: toggle

    property string label

    implicitWidth: 36
    implicitHeight: 20
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.name: label
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    indicator: Item {
        implicitWidth: 36
        implicitHeight: 20

        Plate {
            anchors.fill: parent
            radius: 10
            fill: toggle.checked ? TolmiPalette.frost : TolmiPalette.surfaceFill
            endFill: toggle.checked ? TolmiPalette.cloud : TolmiPalette.chipFill
            border: toggle.checked ? TolmiPalette.surfaceStroke : TolmiPalette.focusStroke
        }
        HoverVeil {
            radius: 10
            color: toggle.checked ? Qt.rgba(0.5, 0.5, 0.5, 0.18) : TolmiPalette.subtleFill
            isShown: toggle.hovered
        }
        Item {
            x: toggle.visualPosition * 16 + 2
            y: 2
            width: 16
            height: 16

            Behavior on x {
                enabled: !toggle.pressed
                NumberAnimation {
                    duration: Motion.toggle
                    easing.type: Easing.OutCubic
                }
            }
            SoftShadow {
                anchors.fill: parent
                radius: 8
                sigma: 1.6
                offsetY: 1
                color: Qt.rgba(0, 0, 0, 0.35)
            }
            Plate {
                anchors.fill: parent
                radius: 8
                fill: toggle.checked ? TolmiPalette.ink : TolmiPalette.isDark ? TolmiPalette.cloud : "white"
                border: toggle.checked || TolmiPalette.isDark ? "transparent" : TolmiPalette.surfaceStroke
            }
        }
        FocusRing {
            visible: toggle.visualFocus
            cornerRadius: 10
        }
    }
}

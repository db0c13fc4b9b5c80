import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A switch without text; `label` is its accessible name.
T.Switch {
    id: control

    property string label

    implicitWidth: 36
    implicitHeight: 20
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: label
    // The default action would toggle without emitting toggled().
    Accessible.onToggleAction: press()
    Keys.onPressed: event => KeyPress.pressed(event, () => control.press())
    Keys.onReleased: event => KeyPress.released(event)

    /// Acts like a press of the space bar.
    function press() {
        toggle();
        toggled();
        clicked();
    }

    indicator: Item {
        implicitWidth: 36
        implicitHeight: 20

        Plate {
            anchors.fill: parent
            radius: 10
            fill: control.checked ? TolmiPalette.frost : TolmiPalette.surfaceFill
            endFill: control.checked ? TolmiPalette.cloud : TolmiPalette.chipFill
            border: control.checked ? TolmiPalette.surfaceStroke : TolmiPalette.focusStroke
        }
        HoverVeil {
            radius: 10
            color: control.checked ? Qt.rgba(0.5, 0.5, 0.5, 0.18) : TolmiPalette.subtleFill
            isShown: control.hovered
        }
        Item {
            x: control.visualPosition * 16 + 2
            y: 2
            width: 16
            height: 16

            Behavior on x {
                enabled: !control.pressed
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
                fill: control.checked ? TolmiPalette.ink : TolmiPalette.isDark ? TolmiPalette.cloud : "white"
                border: control.checked || TolmiPalette.isDark ? "transparent" : TolmiPalette.surfaceStroke
            }
        }
        FocusRing {
            visible: control.visualFocus
            cornerRadius: 10
        }
    }
}

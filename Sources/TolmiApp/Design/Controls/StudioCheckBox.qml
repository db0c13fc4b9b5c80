import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A check box with an optional text.
T.CheckBox {
    id: checkBox

    implicitWidth: 16 + (text === "" ? 0 : label.x + Math.ceil(label.implicitWidth) - 16)
    implicitHeight: 20
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: text
    // The default action would toggle without emitting toggled().
    Accessible.onToggleAction: press()
    Keys.onPressed: event => KeyPress.pressed(event, () => checkBox.press())
    Keys.onReleased: event => KeyPress.released(event)

    /// Acts like a press of the space bar.
    function press() {
        toggle();
        toggled();
        clicked();
    }

    indicator: Item {
        y: (checkBox.height - height) / 2
        implicitWidth: 16
        implicitHeight: 16

        Plate {
            anchors.fill: parent
            radius: Metrics.checkBoxRadius
            fill: checkBox.checked ? TolmiPalette.frost : checkBox.hovered ? TolmiPalette.focusFill : TolmiPalette.surfaceFill
            endFill: checkBox.checked ? TolmiPalette.cloud : TolmiPalette.subtleFill
            border: checkBox.checked ? TolmiPalette.surfaceStroke : TolmiPalette.focusStroke
        }
        Symbol {
            anchors.centerIn: parent
            name: "checkmark"
            size: 12
            stroke: 2.6
            color: TolmiPalette.ink
            opacity: checkBox.checked ? 1 : 0
            scale: checkBox.checked ? 1 : 0.6

            Behavior on opacity {
                NumberAnimation {
                    duration: Motion.toggle
                    easing.type: Easing.OutCubic
                }
            }
            Behavior on scale {
                NumberAnimation {
                    duration: Motion.toggle
                    easing.type: Easing.OutCubic
                }
            }
        }
        FocusRing {
            visible: checkBox.visualFocus
            cornerRadius: Metrics.checkBoxRadius
        }
    }
    contentItem: Item {
        StudioText {
            id: label

            x: 24
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), parent.width - x)
            text: checkBox.text
            visible: text !== ""
            Accessible.ignored: true
        }
    }
}

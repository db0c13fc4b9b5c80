import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A slider from 0 to 1 in steps of 0.05; `label` is its accessible name.
T.Slider {
    id: slider

    property string label

    implicitWidth: 170
    implicitHeight: 20
    from: 0
    to: 1
    stepSize: 0.05
    snapMode: T.Slider.SnapAlways
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: label
    // The default action would move the handle without emitting moved().
    Accessible.onIncreaseAction: {
        increase();
        moved();
    }
    Accessible.onDecreaseAction: {
        decrease();
        moved();
    }

    background: Item {
        Rectangle {
            y: 8
            width: parent.width
            height: 4
            radius: 2
            color: TolmiPalette.surfaceStroke
        }
        Plate {
            x: slider.mirrored ? parent.width - width : 0
            y: 8
            width: 8 + slider.position * (parent.width - 16)
            height: 4
            radius: 2
            fill: TolmiPalette.cloud
            endFill: TolmiPalette.frost
            gradientEnd: Qt.point(1, 0)
        }
    }
    handle: Item {
        x: slider.visualPosition * (slider.width - width)
        y: 2
        implicitWidth: 16
        implicitHeight: 16

        HoverVeil {
            anchors.margins: -5
            radius: 13
            isShown: slider.hovered || slider.pressed
        }
        FocusRing {
            visible: slider.visualFocus
            cornerRadius: 8
        }
        SoftShadow {
            anchors.fill: parent
            radius: 8
            sigma: 2.4
            offsetY: 1.5
            color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.28, 0, 0, 0, 0.55)
        }
        Plate {
            anchors.fill: parent
            radius: 8
            fill: TolmiPalette.isDark ? TolmiPalette.frost : "white"
            endFill: TolmiPalette.isDark ? TolmiPalette.cloud : TolmiPalette.ink
            border: TolmiPalette.tolmiDynamic(0, 0, 0, 0.28, 0, 0, 0, 0.25)
        }
    }
}

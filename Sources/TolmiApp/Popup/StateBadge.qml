import QtQuick
import Tolmi

/// A capsule that tells a state: its name, and a dot or a spinner before it.
Item {
    id: badge

    property string text
    property color dotColor: TolmiPalette.frost
    /// Shows the spinner.
    property bool isBusy: false

    implicitWidth: label.x + label.width + 9
    implicitHeight: 22
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Plate {
        anchors.fill: parent
        radius: height / 2
        fill: TolmiPalette.chipFill
        border: TolmiPalette.chipStroke
    }
    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        x: 9
        width: 6
        height: 6
        radius: 3
        visible: !badge.isBusy
        color: badge.dotColor
        antialiasing: true
        // Or a white dot would vanish in the light scheme.
        border.width: TolmiPalette.isDark ? 0 : 1
        border.color: TolmiPalette.chipStroke
    }
    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        x: 6
        width: 12
        height: 12
        visible: badge.isBusy && badge.Window.visibility !== Window.Hidden
        color: badge.dotColor
    }
    StudioText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: badge.isBusy ? 23 : 19
        role: Typography.pill
        text: badge.text
        Accessible.ignored: true
    }
}

import QtQuick
import Tolmi

/// The picture of a keyboard key.
Item {
    property alias text: label.text

    implicitWidth: label.width + 14
    implicitHeight: 20
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Plate {
        anchors.fill: parent
        radius: Metrics.keyCapRadius
        fill: TolmiPalette.keycapFill
        border: TolmiPalette.keycapStroke
    }
    Rectangle {
        x: 4
        y: parent.height - 2
        width: parent.width - 8
        height: 1
        color: TolmiPalette.keycapStroke
        opacity: TolmiPalette.isDark ? 1 : 0.5
    }
    StudioText {
        id: label

        anchors.centerIn: parent
        role: Typography.keyCap
        Accessible.ignored: true
    }
}

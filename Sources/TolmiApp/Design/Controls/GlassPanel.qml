import QtQuick
import Tolmi

/// A frosted-glass panel that contains its children.
Item {
    id: panel

    property real padding: 18
    property real cornerRadius: 12
    default property alias content: inside.data

    implicitWidth: inside.childrenRect.width + 2 * padding
    implicitHeight: inside.childrenRect.height + 2 * padding

    SoftShadow {
        anchors.fill: parent
        radius: panel.cornerRadius
        sigma: 14
        offsetY: 10
        color: TolmiPalette.panelInnerShadow
    }
    Plate {
        anchors.fill: parent
        radius: panel.cornerRadius
        material: TolmiPalette.material
        fill: TolmiPalette.panelFill
        endFill: TolmiPalette.panelSecondaryFill
        gradientEnd: Qt.point(0.35, 1)
        border: TolmiPalette.panelStroke
        hairline: TolmiPalette.panelEdgeStroke
    }
    Item {
        id: inside

        // No anchors, because they take effect only after the first layout of the content.
        x: panel.padding
        y: panel.padding
        width: panel.width - 2 * panel.padding
        height: panel.height - 2 * panel.padding
    }
}

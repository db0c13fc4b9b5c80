import QtQuick
import Tolmi

/// Background of a menu, dialog or sheet.
Item {
    id: plate

    property real cornerRadius: Metrics.listRowRadius
    property bool isDialog: false

    SoftShadow {
        anchors.fill: parent
        radius: plate.cornerRadius
        sigma: plate.isDialog ? 20 : 14
        offsetY: plate.isDialog ? 16 : 8
        color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.24, 0, 0, 0, 0.52)
    }
    Plate {
        anchors.fill: parent
        radius: plate.cornerRadius
        material: TolmiPalette.menuMaterial
        fill: plate.isDialog ? TolmiPalette.panelFill : "transparent"
        endFill: plate.isDialog ? TolmiPalette.panelSecondaryFill : "transparent"
        border: TolmiPalette.panelStroke
        hairline: TolmiPalette.panelEdgeStroke
    }
}

import QtQuick
import Tolmi

/// A line of the popup that names the control at its right.
Item {
    id: row

    /// Name of the symbol.
    property string symbol
    property string text
    default property alias control: place.data

    implicitWidth: 292
    implicitHeight: 28

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: row.symbol
        size: 16
        color: TolmiPalette.secondaryText
    }
    StudioText {
        anchors.verticalCenter: parent.verticalCenter
        x: 25
        width: place.x - x - 6
        text: row.text
        Accessible.ignored: true
    }
    Item {
        id: place

        anchors.verticalCenter: parent.verticalCenter
        x: parent.width - width
        width: childrenRect.width
        height: childrenRect.height
    }
}

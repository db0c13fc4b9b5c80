import QtQuick
import Tolmi

/// The content of a row in a menu or picker.
Item {
    id: row

    property string text
    property string symbol
    property bool isChecked: false
    property bool isHighlighted: false
    property bool isEnabled: true

    implicitWidth: label.x + Math.ceil(label.implicitWidth) + 16
    implicitHeight: 30
    opacity: isEnabled ? 1 : 0.42

    Rectangle {
        anchors.fill: parent
        radius: Metrics.menuItemRadius
        color: TolmiPalette.focusFill
        visible: row.isHighlighted
        antialiasing: true
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        name: "checkmark"
        size: 13
        stroke: 2.2
        color: TolmiPalette.primaryText
        visible: row.isChecked
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        x: 28
        name: row.symbol
        size: 16
        color: TolmiPalette.secondaryText
        visible: row.symbol !== ""
    }
    StudioText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: row.symbol === "" ? 28 : 52
        width: parent.width - x - 10
        text: row.text
        Accessible.ignored: true
    }
}

import QtQuick
import Tolmi

/// The heading of a panel: a symbol and a title, with optional items at the other end.
Item {
    id: heading

    /// Name of the symbol.
    property string symbol
    property string text
    default property alias trailing: trailingRow.data

    implicitWidth: label.x + Math.ceil(label.implicitWidth) + (trailingRow.width > 0 ? trailingRow.width + 12 : 0)
    implicitHeight: 28

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: heading.symbol
        size: 18
        color: TolmiPalette.primaryText
    }
    StudioText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: 27
        width: Math.min(Math.ceil(implicitWidth), heading.width - x - trailingRow.width - 12)
        role: Typography.head
        text: heading.text
        Accessible.role: Accessible.Heading
    }
    Row {
        id: trailingRow

        anchors.verticalCenter: parent.verticalCenter
        x: parent.width - width
        spacing: 8
    }
}

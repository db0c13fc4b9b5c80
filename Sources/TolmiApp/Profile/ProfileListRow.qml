import QtQuick
import Tolmi

/// A symbol and a few words.
Item {
    id: row

    /// Name of the symbol.
    property string symbol
    property color symbolColor: TolmiPalette.frost
    property alias text: words.text

    width: parent ? parent.width : implicitWidth
    implicitWidth: words.x + words.implicitWidth
    implicitHeight: words.height

    Symbol {
        // The line of a wrapped text has its spare room below.
        y: -1
        name: row.symbol
        size: 18
        color: row.symbolColor
    }
    StudioText {
        id: words

        x: 28
        width: parent.width - x
        wrapMode: Text.Wrap
    }
}

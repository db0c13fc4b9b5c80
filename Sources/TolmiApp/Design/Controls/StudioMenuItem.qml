import QtQuick
import QtQuick.Templates as T

/// A row of a StudioMenu.
T.MenuItem {
    id: item

    /// Name of a symbol before the text; none when empty.
    property string symbol

    implicitWidth: row.implicitWidth
    implicitHeight: 30
    width: parent ? parent.width : implicitWidth
    hoverEnabled: true
    Accessible.name: text

    contentItem: MenuRow {
        id: row

        text: item.text
        symbol: item.symbol
        isChecked: item.checked
        isHighlighted: item.highlighted
        isEnabled: item.enabled
    }
}

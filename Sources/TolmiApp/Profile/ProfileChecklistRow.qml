import QtQuick
import Tolmi

/// One step of the setting-up, done or not.
ProfileListRow {
    property bool isComplete: false

    symbol: isComplete ? "checkmark.circle.fill" : "circle"
    symbolColor: isComplete ? TolmiPalette.frost : TolmiPalette.secondaryText
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isComplete
}

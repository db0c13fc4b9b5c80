import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A place to go to, in the sidebar of a window.
T.ItemDelegate {
    id: row

    /// Name of the symbol.
    property string symbol
    readonly property color foreground: highlighted ? TolmiPalette.primaryText : TolmiPalette.secondaryText

    implicitWidth: 200
    implicitHeight: 36
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selected: highlighted
    Accessible.onPressAction: clicked()
    Keys.onPressed: event => KeyPress.pressed(event, () => row.clicked())
    Keys.onReleased: event => KeyPress.released(event)

    background: Item {
        HoverVeil {
            radius: Metrics.chipRadius
            color: TolmiPalette.subtleFill
            isShown: row.hovered && !row.highlighted
        }
        Plate {
            anchors.fill: parent
            visible: row.highlighted
            radius: Metrics.chipRadius
            fill: TolmiPalette.focusFill
            border: TolmiPalette.chipStroke
        }
        FocusRing {
            anchors.margins: 0
            radius: Metrics.chipRadius
            visible: row.visualFocus
        }
    }
    contentItem: Item {
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            x: 10
            name: row.symbol
            size: 20
            color: row.foreground
        }
        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            x: 41
            width: parent.width - x - 7
            role: Typography.navigation
            text: row.text
            color: row.foreground
            Accessible.ignored: true
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A line of the popup to press: symbol, words, and perhaps the keys that do the same elsewhere.
T.Button {
    id: row

    /// Name of the symbol.
    property string symbol
    /// Keys, as words.
    property string shortcut

    implicitWidth: 292
    implicitHeight: 28
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: text
    Accessible.description: shortcut
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Keys.onPressed: event => KeyPress.pressed(event, () => row.clicked())
    Keys.onReleased: event => KeyPress.released(event)

    // The words stand in line with those of other sections, what lies behind them reaches nearer to the edges.
    background: Item {
        HoverVeil {
            anchors.leftMargin: -8
            anchors.rightMargin: -8
            radius: Metrics.chipRadius
            isShown: row.hovered || row.down
        }
        FocusRing {
            anchors.margins: 0
            anchors.leftMargin: -8
            anchors.rightMargin: -8
            radius: Metrics.chipRadius
            visible: row.visualFocus
        }
    }
    contentItem: Item {
        opacity: row.down ? 0.9 : 1

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            size: 16
            color: TolmiPalette.frost
        }
        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            x: 25
            width: keys.x - x - 8
            role: Typography.value
            text: row.text
            color: TolmiPalette.frost
            Accessible.ignored: true
        }
        StudioText {
            id: keys

            anchors.verticalCenter: parent.verticalCenter
            x: parent.width - width
            role: Typography.caption
            text: row.shortcut
            color: TolmiPalette.tertiaryText
            Accessible.ignored: true
        }
    }
}

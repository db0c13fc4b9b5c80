import QtQuick
import QtQuick.Templates as T
import Tolmi

/// One tab of a StudioTabBar.
T.TabButton {
    id: tab

    /// Name of a symbol before the text; none when empty.
    property string symbol
    readonly property color foreground: checked || hovered ? TolmiPalette.primaryText : TolmiPalette.secondaryText

    implicitWidth: row.implicitWidth + 28
    implicitHeight: 30
    width: implicitWidth
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    opacity: enabled ? 1 : 0.42
    Accessible.focusable: activeFocusOnTab
    Accessible.name: text
    Accessible.selected: checked
    Accessible.onPressAction: {
        if (!checked)
            toggle();
        clicked();
    }

    background: Item {
        FocusRing {
            anchors.margins: 0
            radius: Metrics.fieldRadius
            visible: tab.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: row.implicitWidth

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 7

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: name !== ""
                name: tab.symbol
                size: 15
                color: tab.foreground
            }
            StudioText {
                anchors.verticalCenter: parent.verticalCenter
                role: Typography.navigation
                text: tab.text
                color: tab.foreground
                Accessible.ignored: true
            }
        }
    }
}

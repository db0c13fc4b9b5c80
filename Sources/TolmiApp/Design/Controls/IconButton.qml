import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A button with only a symbol.
T.Button {
    id: button

    /// Name of the symbol.
    property string symbol
    property color color: TolmiPalette.secondaryText
    /// The accessible name and tool tip.
    property string toolTip

    implicitWidth: 26
    implicitHeight: 26
    opacity: enabled ? down ? 0.9 : 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: toolTip
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Keys.onPressed: event => KeyPress.pressed(event, () => button.clicked())
    Keys.onReleased: event => KeyPress.released(event)

    background: Item {
        HoverVeil {
            radius: Metrics.fieldRadius
            color: TolmiPalette.focusFill
            isShown: button.hovered
        }
        FocusRing {
            anchors.margins: 0
            visible: button.visualFocus
            radius: Metrics.fieldRadius
        }
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            size: 15
            color: button.hovered ? TolmiPalette.primaryText : button.color
        }
    }

    StudioToolTip {
        text: button.toolTip
        visible: text !== "" && button.hovered
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// The user's picture and name, to press.
T.Button {
    id: chip

    /// A null picture shows the symbol.
    property alias picture: avatar.picture
    property string symbol: "person.crop.circle.fill"
    property bool isSmall: false
    /// What the chip takes beside the name.
    readonly property real textMargins: isSmall ? 35 : 45
    /// Longer names are elided.
    readonly property real maximumWidth: isSmall ? 90 : 205

    implicitWidth: label.width + textMargins
    implicitHeight: isSmall ? 24 : 34
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    opacity: !enabled ? 0.42 : down ? 0.9 : 1
    Accessible.focusable: activeFocusOnTab
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Keys.onPressed: event => KeyPress.pressed(event, () => chip.clicked())
    Keys.onReleased: event => KeyPress.released(event)

    background: Item {
        Plate {
            anchors.fill: parent
            radius: Metrics.chipRadius
            fill: TolmiPalette.chipFill
            border: TolmiPalette.chipStroke
        }
        HoverVeil {
            radius: Metrics.chipRadius
            color: TolmiPalette.subtleFill
            isShown: chip.hovered
        }
        FocusRing {
            visible: chip.visualFocus
            cornerRadius: Metrics.chipRadius
        }
    }
    contentItem: Item {
        AvatarView {
            id: avatar

            anchors.verticalCenter: parent.verticalCenter
            x: chip.isSmall ? 5 : 7
            size: chip.isSmall ? 16 : 20
            symbol: chip.symbol
        }
        StudioText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            x: chip.isSmall ? 26 : 33
            width: Math.min(Math.ceil(implicitWidth), chip.maximumWidth - chip.textMargins)
            role: chip.isSmall ? Typography.mark : Typography.strong
            text: chip.text
            Accessible.ignored: true
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A button in one of four tones.
T.Button {
    id: button

    enum Tone { Primary, Secondary, Muted, Danger }

    property int tone: StudioButton.Primary
    /// Whether it fills its parent's width.
    property bool isWide: false
    /// The compact, bordered variant.
    property bool isSmall: false
    /// Name of a symbol before the text; none when empty.
    property string symbol
    /// The tool tip.
    property string toolTip
    readonly property color foreground: tone === StudioButton.Primary ? TolmiPalette.ink
                                        : tone === StudioButton.Danger ? "white" : TolmiPalette.frost
    property real pressOpacity: down ? 0.9 : 1
    readonly property int cornerRadius: isSmall ? Metrics.chipRadius : Metrics.buttonRadius

    width: isWide && parent ? parent.width : implicitWidth
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: isSmall ? 28 : 36
    horizontalPadding: isSmall ? 10 : 14
    verticalPadding: isSmall ? 6 : 10
    opacity: enabled ? pressOpacity : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    Accessible.focusable: activeFocusOnTab
    Accessible.name: text
    Accessible.description: toolTip
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Keys.onPressed: event => KeyPress.pressed(event, () => button.clicked())
    Keys.onReleased: event => KeyPress.released(event)

    function fillOf(tone: int): color {
        switch (tone) {
        case StudioButton.Secondary:
            return TolmiPalette.faded(TolmiPalette.slate, 0.9);
        case StudioButton.Muted:
            return TolmiPalette.chipFill;
        case StudioButton.Danger:
            return Qt.rgba(0, 0, 0, 0.94);
        default:
            return TolmiPalette.frost;
        }
    }
    function endFillOf(tone: int): color {
        switch (tone) {
        case StudioButton.Secondary:
            return TolmiPalette.faded(TolmiPalette.graphite, 0.86);
        case StudioButton.Muted:
            return TolmiPalette.subtleFill;
        case StudioButton.Danger:
            return TolmiPalette.graphite;
        default:
            return TolmiPalette.cloud;
        }
    }
    function borderOf(tone: int): color {
        switch (tone) {
        case StudioButton.Secondary:
            return TolmiPalette.chipStroke;
        case StudioButton.Muted:
            return TolmiPalette.keycapStroke;
        case StudioButton.Danger:
            return Qt.rgba(1, 1, 1, 0.22);
        default:
            return TolmiPalette.surfaceStroke;
        }
    }
    function veilOf(tone: int): color {
        switch (tone) {
        case StudioButton.Primary:
            return TolmiPalette.isDark ? Qt.rgba(0, 0, 0, 0.07) : Qt.rgba(1, 1, 1, 0.1);
        case StudioButton.Danger:
            return Qt.rgba(1, 1, 1, 0.1);
        default:
            return TolmiPalette.focusFill;
        }
    }

    Behavior on pressOpacity {
        SpringAnimation {
            spring: Motion.buttonPress.spring
            damping: Motion.buttonPress.damping
            epsilon: 0.0005
        }
    }

    background: Item {
        // Only the plate is scaled, because scaling would blur the text.
        scale: button.down ? 0.98 : 1

        Behavior on scale {
            SpringAnimation {
                spring: Motion.buttonPress.spring
                damping: Motion.buttonPress.damping
                epsilon: 0.0005
            }
        }
        SoftShadow {
            anchors.fill: parent
            visible: button.tone === StudioButton.Primary && !button.isSmall
            radius: button.cornerRadius
            sigma: 4
            offsetY: 2
            color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.22, 0, 0, 0, 0.4)
        }
        Plate {
            anchors.fill: parent
            radius: button.cornerRadius
            fill: button.fillOf(button.tone)
            endFill: button.endFillOf(button.tone)
            // In the light scheme the danger gradient ends far below the button, because its last colour is nearly
            // white, like the text.
            gradientEnd: Qt.point(0, button.tone === StudioButton.Danger && !TolmiPalette.isDark ? 4.5 : 1)
            border: button.borderOf(button.tone)
            highlight: button.isSmall ? "transparent" : Qt.rgba(1, 1, 1, 0.24)
        }
        HoverVeil {
            radius: button.cornerRadius
            color: button.veilOf(button.tone)
            isShown: button.hovered && !button.down
        }
        FocusRing {
            visible: button.visualFocus
            cornerRadius: button.cornerRadius
        }
    }
    contentItem: Item {
        // Not the row's implicit width, because its text is elided to the button's width.
        implicitWidth: icon.taken + Math.ceil(label.implicitWidth)
        implicitHeight: 16

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 7

            Symbol {
                id: icon

                readonly property real taken: name === "" ? 0 : size + row.spacing

                anchors.verticalCenter: parent.verticalCenter
                visible: name !== ""
                name: button.symbol
                size: button.isSmall ? 14 : 16
                stroke: 1.9
                color: button.foreground
            }
            StudioText {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(Math.ceil(implicitWidth), button.availableWidth - icon.taken)
                role: button.isSmall ? Typography.smallButton : Typography.button
                text: button.text
                color: button.foreground
                Accessible.ignored: true
            }
        }
    }

    StudioToolTip {
        text: button.toolTip
        visible: text !== "" && button.hovered
    }
}

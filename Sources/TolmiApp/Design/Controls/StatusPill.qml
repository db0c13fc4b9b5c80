import QtQuick
import Tolmi

/// A state as symbol and text.
Item {
    id: pill

    enum Tone { Neutral, Success, Accent, Danger }

    /// Name of the symbol.
    property string icon
    property string text
    property int tone: StatusPill.Neutral
    readonly property color foreground: tone === StatusPill.Success || tone === StatusPill.Accent
                                        ? TolmiPalette.ink : TolmiPalette.frost

    implicitWidth: row.width + 18
    implicitHeight: 24
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    function fillOf(tone: int): color {
        switch (tone) {
        case StatusPill.Success:
            return TolmiPalette.faded(TolmiPalette.cloud, 0.7);
        case StatusPill.Accent:
            return TolmiPalette.cloud;
        case StatusPill.Danger:
            return TolmiPalette.faded(TolmiPalette.slate, 0.94);
        default:
            return TolmiPalette.surfaceStroke;
        }
    }
    function endFillOf(tone: int): color {
        switch (tone) {
        case StatusPill.Success:
            return TolmiPalette.faded(TolmiPalette.frost, 0.5);
        case StatusPill.Accent:
            return TolmiPalette.frost;
        case StatusPill.Danger:
            return TolmiPalette.faded(TolmiPalette.graphite, 0.92);
        default:
            return TolmiPalette.surfaceFill;
        }
    }

    Plate {
        anchors.fill: parent
        radius: Metrics.chipRadius
        // On a light backdrop the translucent dark gradient alone leaves too little contrast with the light text.
        material: pill.tone === StatusPill.Success && !TolmiPalette.isDark
                  ? TolmiPalette.faded(TolmiPalette.frost, 0.16) : "transparent"
        fill: pill.fillOf(pill.tone)
        endFill: pill.endFillOf(pill.tone)
        gradientEnd: Qt.point(1, 1)
        border: TolmiPalette.chipStroke
    }
    Row {
        id: row

        anchors.centerIn: parent
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: pill.icon
            size: 13
            stroke: 2
            color: pill.foreground
        }
        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            role: Typography.pill
            text: pill.text
            color: pill.foreground
            Accessible.ignored: true
        }
    }
}

import QtQuick
import Tolmi

/// The meters and a glass panel.
Item {
    id: page

    property bool isRomanian: false

    StudioText {
        x: 20
        y: 20
        role: Typography.title
        text: page.isRomanian ? "Dictare live" : "Dictation Live"
    }
    StatusPill {
        x: 20
        y: 60
        icon: "waveform.circle.fill"
        text: page.isRomanian ? "Inregistrare" : "Recording"
        tone: StatusPill.Accent
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 110
        spacing: 60

        VoiceOrbView {
            isActive: true
            level: 0.55
        }
        VoiceOrbView { }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 330
        spacing: 40

        SignalWaveView {
            isActive: true
            level: 0.1
            tint: TolmiPalette.frost
        }
        SignalWaveView {
            isActive: true
            level: 0.6
            tint: TolmiPalette.frost
        }
        SignalWaveView { tint: TolmiPalette.frost }
    }
    GlassPanel {
        x: 20
        y: 440
        width: parent.width - 40
        padding: Metrics.cardPadding

        Item {
            width: parent.width
            height: 150

            Row {
                height: 24
                spacing: 9

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "waveform.circle"
                    size: 20
                    color: TolmiPalette.primaryText
                }
                StudioText {
                    anchors.verticalCenter: parent.verticalCenter
                    role: Typography.head
                    text: page.isRomanian ? "Dictare" : "Dictation"
                }
                StatusPill {
                    icon: "checkmark.seal.fill"
                    text: page.isRomanian ? "Gata" : "Ready"
                    tone: StatusPill.Success
                }
            }
            StudioText {
                y: 40
                width: 430
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
                text: page.isRomanian ? "Foloseste Alt dreapta sau butonul de mai jos pentru a controla inregistrarea."
                                      : "Use Right Alt or the button below to control recording."
            }
            SignalWaveView {
                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                bars: 44
                spacing: 5
                tint: TolmiPalette.frost
            }
            Row {
                y: 104
                spacing: 10

                StudioButton {
                    symbol: "mic.fill"
                    text: page.isRomanian ? "Porneste inregistrarea" : "Start Recording"
                }
                StudioButton {
                    tone: StudioButton.Secondary
                    text: page.isRomanian ? "Deschide Dictare live" : "Open Dictation Live"
                }
            }
        }
    }
}

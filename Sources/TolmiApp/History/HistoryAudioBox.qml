import QtQuick
import Tolmi

/// The recording of the focused entry: to hear and to find, or why there is none.
Item {
    id: box

    required property HistoryWorkspaceModel model
    required property var texts
    readonly property int audioState: model.detail.audioState
    readonly property bool isAvailable: audioState === HistoryEntryDetail.Available
    readonly property bool isCaptured: audioState !== HistoryEntryDetail.NotCaptured

    implicitHeight: column.implicitHeight + 28

    Plate {
        anchors.fill: parent
        radius: Metrics.panelRadius
        fill: TolmiPalette.panelFill
        border: TolmiPalette.chipStroke
    }
    Column {
        id: column

        x: 14
        y: 14
        width: parent.width - 28
        spacing: 12

        Item {
            width: parent.width
            height: 18

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "waveform"
                size: 16
                color: TolmiPalette.secondaryText
            }
            StudioText {
                id: title

                x: 24
                role: Typography.strong
                text: box.texts.historyAudioTitle
                Accessible.role: Accessible.Heading
            }
            StudioText {
                objectName: "audioFile"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(Math.ceil(implicitWidth), parent.width - title.x - title.width - 16)
                role: Typography.caption
                elide: Text.ElideMiddle
                text: box.model.detail.audioFile
                color: TolmiPalette.secondaryText
                visible: box.isCaptured
            }
        }
        StudioText {
            objectName: "audioMessage"
            width: parent.width
            wrapMode: Text.Wrap
            visible: !box.isAvailable
            color: TolmiPalette.secondaryText
            text: box.isCaptured ? box.texts.historyAudioMissing : box.texts.historyAudioUnavailable
        }
        Row {
            spacing: 8
            visible: box.isCaptured

            StudioButton {
                objectName: "play"
                isSmall: true
                symbol: box.model.isFocusedEntryPlaying ? "pause.fill" : "play.fill"
                text: box.model.audioPlaybackLabel
                visible: box.isAvailable
                onClicked: box.model.toggleFocusedPlayback()
            }
            StudioButton {
                objectName: "reveal"
                isSmall: true
                tone: StudioButton.Muted
                symbol: "folder"
                text: box.texts.historyAudioRevealInFinder
                onClicked: box.model.revealFocusedAudio()
            }
        }
    }
}

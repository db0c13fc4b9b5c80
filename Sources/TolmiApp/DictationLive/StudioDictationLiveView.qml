import QtQuick
import Tolmi

/// The stage for dictating from inside the window.
ScrollPage {
    id: page

    required property DictationLiveModel model
    required property var texts
    readonly property DictationControl dictation: model.dictation

    Item {
        id: room

        width: parent.width
        // Everything has its place in the window where it fits; a long transcript makes the page scroll.
        height: Math.max(page.height - 2 * Metrics.workspacePadding,
                         header.height + stage.height + 40 + (transcript.visible ? transcript.height + 16 : 0))

        Column {
            id: header

            width: parent.width
            spacing: 8

            StudioText {
                width: Math.min(Math.ceil(implicitWidth), parent.width)
                role: Typography.title
                text: page.texts.dictationLiveTitle
                Accessible.role: Accessible.Heading
            }
            Row {
                width: parent.width
                spacing: 10

                StatusPill {
                    id: pill

                    icon: page.dictation.stateIcon
                    text: page.dictation.stateLabel
                    tone: page.dictation.stateTone
                }
                StudioText {
                    anchors.verticalCenter: pill.verticalCenter
                    width: Math.min(Math.ceil(implicitWidth), parent.width - pill.width - 10)
                    role: Typography.caption
                    text: page.texts.dictationLiveHotkey
                    color: TolmiPalette.secondaryText
                }
            }
        }
        Column {
            id: stage

            readonly property real upper: header.height + 8
            readonly property real lower: transcript.visible ? transcript.y - 8 : room.height

            y: Math.round(upper + (lower - upper - height) / 2)
            width: parent.width

            VoiceOrbView {
                anchors.horizontalCenter: parent.horizontalCenter
                isActive: page.dictation.isRecording
                level: page.dictation.audioLevel
                Accessible.name: page.dictation.stateLabel
            }
            // Keeps its place while it is empty, so that the button stays where it is.
            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width, 560)
                height: Math.max(20, errorRow.visible ? errorRow.height : 0)

                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    height: 20
                    spacing: 8
                    visible: page.dictation.isProcessing

                    Spinner { anchors.verticalCenter: parent.verticalCenter }
                    StudioText {
                        anchors.verticalCenter: parent.verticalCenter
                        width: Math.min(Math.ceil(implicitWidth), stage.width - 24)
                        text: page.dictation.processingMessage
                        color: TolmiPalette.secondaryText
                    }
                }
                Row {
                    id: errorRow

                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: 8
                    visible: page.dictation.errorMessage !== ""

                    Symbol {
                        y: 2
                        name: "exclamationmark.triangle.fill"
                        size: 16
                        color: TolmiPalette.primaryText
                    }
                    StudioText {
                        width: Math.min(Math.ceil(implicitWidth), stage.width - 24, 536)
                        text: page.dictation.errorMessage
                        wrapMode: Text.Wrap
                    }
                }
            }
            Item {
                width: 1
                height: 16
            }
            DictationButton {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.max(220, implicitWidth)
                symbol: ""
                dictation: page.dictation
                onClicked: page.dictation.runAction()
            }
        }
        GlassPanel {
            id: transcript

            y: room.height - height
            width: parent.width
            height: 28 + 14 + transcriptText.height + 2 * padding
            padding: Metrics.cardPadding
            visible: page.model.lastTranscript !== ""

            StudioText {
                y: 4
                width: Math.min(Math.ceil(implicitWidth), copy.x - 12)
                role: Typography.head
                text: page.texts.dictationLiveLastTranscript
            }
            StudioButton {
                id: copy

                x: parent.width - width
                isSmall: true
                tone: StudioButton.Muted
                symbol: "doc.on.doc"
                text: page.texts.dictationLiveCopy
                onClicked: page.model.copyLastTranscript()
            }
            TextBox {
                id: transcriptText

                y: 42
                width: parent.width
                label: page.texts.dictationLiveLastTranscript
                text: page.model.lastTranscript
            }
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// Everything about the focused entry.
GlassPanel {
    id: panel

    required property HistoryWorkspaceModel model
    required property var texts
    readonly property string entryID: String(model.detail.entryID)

    implicitWidth: 440
    implicitHeight: 480
    padding: 1
    onEntryIDChanged: scroll.contentY = 0

    StudioText {
        objectName: "selectToInspect"
        anchors.centerIn: parent
        width: Math.min(Math.ceil(implicitWidth), parent.width - 40)
        visible: !panel.model.detail.isPresent
        horizontalAlignment: Text.AlignHCenter
        text: panel.texts.historySelectToInspect
        color: TolmiPalette.secondaryText
    }
    Flickable {
        id: scroll

        anchors.fill: parent
        visible: panel.model.detail.isPresent
        contentWidth: width
        contentHeight: column.height + 34
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: StudioScrollBar { }

        Column {
            id: column

            x: 17
            y: 17
            width: scroll.width - 34
            spacing: Metrics.cardGap

            Column {
                width: parent.width
                spacing: 3

                Row {
                    height: 24
                    spacing: 10

                    StudioText {
                        objectName: "date"
                        role: Typography.head
                        text: panel.model.detail.date
                        Accessible.role: Accessible.Heading
                    }
                    StudioText {
                        objectName: "language"
                        height: Typography.head.lineHeight
                        role: Typography.caption
                        text: panel.model.detail.language
                        color: TolmiPalette.secondaryText
                    }
                }
                Repeater {
                    model: panel.model.detail.pasteFacts

                    StudioText {
                        required property string modelData

                        width: column.width
                        role: Typography.caption
                        wrapMode: Text.Wrap
                        text: modelData
                        color: TolmiPalette.secondaryText
                    }
                }
            }
            HistoryAudioBox {
                width: parent.width
                model: panel.model
                texts: panel.texts
            }
            TranscriptBlock {
                objectName: "raw"
                width: parent.width
                title: panel.texts.historyRaw
                text: panel.model.detail.rawText
                copyTitle: panel.model.copyRawTitle
                onCopyRequested: panel.model.copyRawText()
            }
            TranscriptBlock {
                objectName: "refined"
                width: parent.width
                title: panel.texts.historyRefined
                text: panel.model.detail.refinedText
                copyTitle: panel.model.copyRefinedTitle
                onCopyRequested: panel.model.copyRefinedText()
            }
        }
    }
}

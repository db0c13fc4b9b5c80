import QtQuick
import Tolmi

/// Everything about the focused entry. The arrow keys scroll it.
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
    ScrollPage {
        id: scroll

        objectName: "detailPage"
        anchors.fill: parent
        padding: 17
        visible: panel.model.detail.isPresent
        // From whatever in the pane has the keyboard and has no use for these keys itself.
        Keys.onPressed: event => {
            const line = 48;
            const distance = ({
                [Qt.Key_Up]: -line, [Qt.Key_Down]: line,
                [Qt.Key_PageUp]: line - height, [Qt.Key_PageDown]: height - line,
                [Qt.Key_Home]: -contentHeight, [Qt.Key_End]: contentHeight
            })[event.key];
            if (distance === undefined)
                return;
            scrollBy(distance);
            event.accepted = true;
        }

        Column {
            id: column

            width: parent.width
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

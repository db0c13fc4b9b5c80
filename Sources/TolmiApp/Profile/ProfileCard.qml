import QtQuick
import Tolmi

/// A pane under a heading.
GlassPanel {
    id: card

    property string title
    /// A few words under the heading; none when empty.
    property string hint
    /// At the other end of the heading's line.
    property string caption
    default property alias rows: column.data

    width: parent ? parent.width : implicitWidth
    padding: Metrics.cardPadding
    implicitHeight: column.height + 2 * padding

    Column {
        id: column

        width: parent.width
        spacing: 12

        Item {
            width: parent.width
            height: heading.height + (hintText.visible ? hintText.height + 2 : 0)

            StudioText {
                id: heading

                width: Math.min(Math.ceil(implicitWidth), parent.width - captionText.width - 12)
                role: Typography.head
                text: card.title
                Accessible.role: Accessible.Heading
            }
            StudioText {
                id: captionText

                objectName: "caption"
                x: parent.width - width
                anchors.verticalCenter: heading.verticalCenter
                role: Typography.caption
                text: card.caption
                color: TolmiPalette.secondaryText
            }
            StudioText {
                id: hintText

                y: heading.height + 2
                width: parent.width
                visible: text !== ""
                text: card.hint
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
            }
        }
    }
}

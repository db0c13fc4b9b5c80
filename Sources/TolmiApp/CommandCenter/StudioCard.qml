import QtQuick
import Tolmi

/// A panel with a title, a short text and a button.
GlassPanel {
    id: card

    /// Name of the symbol before the title.
    property string symbol
    property string title
    /// Shown at the end of the title row.
    property string caption
    property string hint
    /// A separate line above the button; hidden if empty.
    property string note
    property string buttonText

    signal pressed()

    padding: Metrics.cardPadding
    implicitHeight: lead.height + (note === "" ? Metrics.actionGap : Metrics.besideGap) + foot.height + 2 * padding

    Column {
        id: lead

        width: parent.width
        spacing: Metrics.headingGap

        Item {
            width: parent.width
            height: 24

            Symbol {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                name: card.symbol
                size: 20
                color: TolmiPalette.primaryText
            }
            StudioText {
                anchors.verticalCenter: parent.verticalCenter
                anchors.left: mark.right
                anchors.leftMargin: Metrics.symbolGap
                anchors.right: captionText.left
                anchors.rightMargin: 8
                role: Typography.head
                text: card.title
            }
            StudioText {
                id: captionText

                anchors.verticalCenter: parent.verticalCenter
                anchors.right: parent.right
                role: Typography.caption
                text: card.caption
                color: TolmiPalette.tertiaryText
            }
        }
        StudioText {
            width: parent.width
            text: card.hint
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
    }
    Column {
        id: foot

        anchors.bottom: parent.bottom
        width: parent.width
        spacing: Metrics.actionGap

        StudioText {
            width: parent.width
            role: Typography.caption
            text: card.note
            color: TolmiPalette.tertiaryText
            visible: text !== ""
        }
        StudioButton {
            isWide: true
            tone: StudioButton.Secondary
            text: card.buttonText
            onClicked: card.pressed()
        }
    }
}

import QtQuick
import Tolmi

/// A pane with a title, a few words and the button that leads further.
GlassPanel {
    id: card

    /// Name of the symbol before the title.
    property string symbol
    property string title
    /// At the other end of the title's line.
    property string caption
    property string hint
    /// A line of its own over the button; none when empty.
    property string note
    property string buttonText

    signal pressed()

    padding: Metrics.cardPadding
    implicitHeight: header.height + 14 + words.height + (note === "" ? 0 : 28) + 20 + button.height
                    + 2 * padding

    Item {
        id: header

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
            x: 29
            width: Math.min(Math.ceil(implicitWidth), parent.width - x - captionText.width - 8)
            role: Typography.head
            text: card.title
        }
        StudioText {
            id: captionText

            anchors.verticalCenter: parent.verticalCenter
            x: parent.width - width
            role: Typography.caption
            text: card.caption
            color: TolmiPalette.tertiaryText
        }
    }
    StudioText {
        id: words

        y: header.height + 14
        width: parent.width
        text: card.hint
        color: TolmiPalette.secondaryText
        wrapMode: Text.Wrap
    }
    StudioText {
        y: button.y - 20 - height
        width: parent.width
        role: Typography.caption
        text: card.note
        color: TolmiPalette.tertiaryText
        visible: text !== ""
    }
    StudioButton {
        id: button

        y: parent.height - height
        isWide: true
        tone: StudioButton.Secondary
        text: card.buttonText
        onClicked: card.pressed()
    }
}

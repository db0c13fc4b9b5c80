import QtQuick
import Tolmi

/// Title and subtitle of a workspace, with its actions at the other end.
Item {
    id: header

    property string title
    property string subtitle
    default property alias trailing: trailingRow.data
    readonly property real wordsWidth: width - (trailingRow.width > 0 ? trailingRow.width + 20 : 0)

    implicitHeight: words.height

    Column {
        id: words

        width: header.wordsWidth
        spacing: 4

        StudioText {
            width: parent.width
            role: Typography.title
            text: header.title
            Accessible.role: Accessible.Heading
        }
        StudioText {
            width: parent.width
            text: header.subtitle
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
    }
    Row {
        id: trailingRow

        x: parent.width - width
        spacing: 8
    }
}

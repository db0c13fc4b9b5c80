import QtQuick

/// A label and, at the other end, its control.
Item {
    id: row

    property string label
    /// A second, smaller line.
    property string hint
    /// Whether another row follows.
    property bool isLast: false
    default property alias control: holder.data

    width: parent ? parent.width : implicitWidth
    implicitWidth: 400
    implicitHeight: Math.max(hint === "" || label === "" ? 44 : 60, holder.height + 14, texts.height + 16)

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: 14
        width: holder.x - 14 - 12
        spacing: 1

        StudioText {
            width: Math.min(implicitWidth + 1, parent.width)
            text: row.label
            visible: text !== ""
        }
        StudioText {
            width: parent.width
            role: Typography.caption
            text: row.hint
            color: TolmiPalette.tertiaryText
            wrapMode: Text.Wrap
            visible: text !== ""
        }
    }
    Item {
        id: holder

        anchors.verticalCenter: parent.verticalCenter
        x: parent.width - width - 14
        width: childrenRect.width
        height: childrenRect.height
    }
    Divider {
        x: 14
        y: parent.height - 1
        width: parent.width - 28
        visible: !row.isLast
    }
}

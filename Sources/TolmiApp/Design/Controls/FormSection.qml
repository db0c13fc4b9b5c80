import QtQuick

/// A group of FormRows under a heading.
Column {
    id: section

    property string title
    default property alias rows: column.data

    spacing: 8

    StudioText {
        x: 14
        role: Typography.sectionHeader
        text: section.title
        color: TolmiPalette.secondaryText
        visible: text !== ""
        Accessible.role: Accessible.Heading
    }
    GlassPanel {
        width: section.width
        padding: 0
        implicitHeight: column.height

        Column {
            id: column

            width: parent.width
        }
    }
}

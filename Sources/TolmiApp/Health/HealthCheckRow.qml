import QtQuick
import Tolmi

/// One check and its outcome as symbol and text. Errors are not marked by colour alone.
GlassPanel {
    id: row

    required property var item
    required property var texts

    padding: 14
    cornerRadius: Metrics.panelRadius
    objectName: item.id
    Accessible.role: Accessible.ListItem
    Accessible.name: texts.labelled(item.title, item.message)
    Accessible.description: item.hint

    function symbolOf(status: int): string {
        switch (status) {
        case HealthCheckItem.Ok:
            return "checkmark.circle.fill";
        case HealthCheckItem.Warning:
            return "exclamationmark.triangle.fill";
        case HealthCheckItem.Error:
            return "xmark.octagon.fill";
        default:
            return "hourglass";
        }
    }
    function colorOf(status: int): color {
        switch (status) {
        case HealthCheckItem.Ok:
            return "white";
        case HealthCheckItem.Warning:
            return TolmiPalette.cloud;
        case HealthCheckItem.Error:
            return TolmiPalette.smoke;
        default:
            return TolmiPalette.secondaryText;
        }
    }

    Item {
        id: mark

        readonly property bool isWhiteOnLight: row.item.status === HealthCheckItem.Ok && !TolmiPalette.isDark

        width: 24
        height: 24

        // The disc is white in the light scheme too: the dark background makes the check mark visible, the ring the
        // disc.
        Rectangle {
            anchors.centerIn: parent
            width: 16
            height: 16
            radius: 8
            color: TolmiPalette.smoke
            visible: mark.isWhiteOnLight
            antialiasing: true
        }
        Symbol {
            objectName: "symbol"
            name: row.symbolOf(row.item.status)
            size: 24
            color: row.colorOf(row.item.status)
        }
        Rectangle {
            objectName: "ring"
            anchors.centerIn: parent
            width: 22
            height: 22
            radius: 11
            color: "transparent"
            border.width: 1
            border.color: TolmiPalette.chipStroke
            visible: mark.isWhiteOnLight
            antialiasing: true
        }
    }
    Column {
        x: 38
        width: parent.width - x
        // Keeps the row's height while the outcome is unknown.
        bottomPadding: hint.visible ? 0 : spacing + hint.role.lineHeight
        spacing: 2

        StudioText {
            objectName: "title"
            width: parent.width
            height: 24
            role: Typography.head
            text: row.item.title
            Accessible.ignored: true
        }
        StudioText {
            objectName: "message"
            width: parent.width
            text: row.item.message
            Accessible.ignored: true
        }
        StudioText {
            id: hint

            objectName: "hint"
            width: parent.width
            role: Typography.caption
            text: row.item.hint
            color: TolmiPalette.tertiaryText
            wrapMode: Text.Wrap
            visible: text !== ""
            Accessible.ignored: true
        }
    }
}

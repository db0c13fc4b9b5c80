import QtQuick
import Tolmi

/// How much there is, and what is done to many entries at once.
GlassPanel {
    id: bar

    required property HistoryWorkspaceModel model
    required property var texts

    implicitWidth: 880
    implicitHeight: 44
    padding: 0

    Row {
        anchors.verticalCenter: parent.verticalCenter
        x: 16
        spacing: 8

        StudioText {
            role: Typography.strong
            text: bar.model.countText
        }
        StudioText {
            height: Typography.strong.lineHeight
            text: "•"
            color: TolmiPalette.tertiaryText
            Accessible.ignored: true
        }
        StudioText {
            height: Typography.strong.lineHeight
            text: bar.model.selectedText
            color: TolmiPalette.secondaryText
        }
    }
    Row {
        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: 8
        spacing: 6

        StudioButton {
            objectName: "exportSelected"
            isSmall: true
            tone: StudioButton.Secondary
            symbol: "square.and.arrow.up"
            text: bar.texts.historyExportSelected
            enabled: bar.model.hasSelection
            onClicked: bar.model.exportSelectedEntries()
        }
        StudioButton {
            objectName: "exportAll"
            isSmall: true
            tone: StudioButton.Secondary
            text: bar.texts.historyExportAll
            enabled: bar.model.hasEntries
            onClicked: bar.model.exportAllEntries()
        }
        Divider {
            anchors.verticalCenter: parent.verticalCenter
            width: 1
            height: 20
        }
        StudioButton {
            objectName: "deleteSelected"
            isSmall: true
            tone: StudioButton.Secondary
            symbol: "trash"
            text: bar.texts.historyDeleteSelected
            enabled: bar.model.hasSelection
            onClicked: bar.model.deleteSelectedEntries()
        }
        StudioButton {
            objectName: "clearAll"
            isSmall: true
            tone: StudioButton.Danger
            text: bar.texts.historyClearAllButton
            enabled: bar.model.hasEntries
            onClicked: bar.model.askToClearAll()
        }
    }
}

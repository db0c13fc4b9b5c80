import QtQuick
import Tolmi

/// How to dictate, or why one cannot, and what was dictated last.
Item {
    id: status

    required property MenuBarPopupModel model
    required property var texts

    implicitWidth: 320
    implicitHeight: column.height + 2 * Metrics.popupPadding

    Column {
        id: column

        x: Metrics.popupPadding
        y: Metrics.popupPadding
        width: parent.width - 2 * Metrics.popupPadding
        spacing: 12

        Item {
            objectName: "accessibilityWarning"
            visible: !status.model.accessibilityGranted
            width: parent.width
            height: Math.max(words.height, grant.height)

            Symbol {
                name: "exclamationmark.shield.fill"
                size: 20
                color: TolmiPalette.frost
            }
            Column {
                id: words

                x: 31
                width: grant.x - x - 10
                spacing: 2

                StudioText {
                    width: parent.width
                    role: Typography.strong
                    text: status.texts.menuBarAccessibilityRequired
                }
                StudioText {
                    width: parent.width
                    role: Typography.caption
                    text: status.texts.menuBarGrantAccessHint
                    color: TolmiPalette.secondaryText
                    wrapMode: Text.Wrap
                }
            }
            StudioButton {
                id: grant

                objectName: "grant"
                anchors.verticalCenter: parent.verticalCenter
                x: parent.width - width
                isSmall: true
                text: status.texts.menuBarGrant
                onClicked: status.model.requestAccessibility()
            }
        }
        Row {
            objectName: "hotkeyReminder"
            visible: status.model.accessibilityGranted
            height: 20
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "keyboard"
                size: 18
                color: TolmiPalette.secondaryText
            }
            StudioText {
                anchors.verticalCenter: parent.verticalCenter
                text: status.texts.menuBarHold
                color: TolmiPalette.secondaryText
            }
            KeyCap {
                anchors.verticalCenter: parent.verticalCenter
                text: status.texts.settingsRightOption
            }
            StudioText {
                anchors.verticalCenter: parent.verticalCenter
                text: status.texts.menuBarToDictate
                color: TolmiPalette.secondaryText
            }
        }
        Item {
            objectName: "lastTranscript"
            visible: status.model.lastTranscript !== ""
            width: parent.width
            height: transcript.y + transcript.height

            StudioText {
                anchors.verticalCenter: copy.verticalCenter
                role: Typography.sectionHeader
                text: status.texts.menuBarLastTranscript
                color: TolmiPalette.secondaryText
            }
            StudioButton {
                id: copy

                objectName: "copy"
                x: parent.width - width
                implicitHeight: 26
                isSmall: true
                tone: StudioButton.Muted
                symbol: "doc.on.doc"
                text: status.texts.menuBarCopy
                onClicked: status.model.copyLastTranscript()
            }
            TextBox {
                id: transcript

                y: copy.height + 6
                width: parent.width
                role: Typography.caption
                padding: 10
                maximumLines: 4
                label: status.texts.menuBarLastTranscript
                text: status.model.lastTranscript
            }
        }
    }
}

import QtQuick
import Tolmi

/// A question or notice with one or two buttons. The one that changes nothing has the focus.
SheetPopup {
    id: dialog

    property string message
    /// Name of the symbol over the title; none when empty.
    property string symbol: "exclamationmark.triangle.fill"
    property string confirmText
    property int confirmTone: StudioButton.Primary
    /// Empty for a notice without a choice.
    property string cancelText

    readonly property Item first: cancelText !== "" ? cancel : confirm

    implicitWidth: Math.max(310, actions.implicitWidth + 2 * padding)
    implicitHeight: column.implicitHeight + 2 * padding
    onAboutToShow: first.focus = true
    // Who has gone on by keyboard while it faded in stays there.
    onOpened: {
        if (first.focus)
            first.forceActiveFocus(Qt.TabFocusReason);
    }

    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.AlertMessage
        Accessible.name: dialog.title
        Accessible.description: dialog.message

        Column {
            id: column

            width: parent.width
            spacing: 4

            Symbol {
                name: dialog.symbol
                size: 26
                color: TolmiPalette.primaryText
                visible: name !== ""
            }
            Item {
                width: 1
                height: 4
            }
            StudioText {
                width: parent.width
                role: Typography.head
                text: dialog.title
                wrapMode: Text.Wrap
            }
            StudioText {
                width: parent.width
                text: dialog.message
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
                visible: text !== ""
            }
            Item {
                width: 1
                height: 8
            }
            Row {
                id: actions

                anchors.right: parent.right
                spacing: 8

                StudioButton {
                    id: cancel

                    tone: StudioButton.Muted
                    text: dialog.cancelText
                    visible: text !== ""
                    onClicked: dialog.reject()
                }
                StudioButton {
                    id: confirm

                    tone: dialog.confirmTone
                    text: dialog.confirmText
                    onClicked: dialog.accept()
                }
            }
        }
    }
}

import QtQuick
import Tolmi

/// One text of an entry, to read, to select and to copy.
Column {
    id: block

    property string title
    property string text
    property string copyTitle
    /// Characters that are laid out: a megabyte would hold up the window for seconds. The copy is always whole.
    readonly property int longestShownText: 30000

    signal copyRequested

    spacing: 8

    Item {
        width: parent.width
        height: 28

        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            role: Typography.strong
            text: block.title
            Accessible.role: Accessible.Heading
        }
        StudioButton {
            objectName: "copy"
            anchors.right: parent.right
            isSmall: true
            tone: StudioButton.Muted
            symbol: "doc.on.doc"
            text: block.copyTitle
            onClicked: block.copyRequested()
        }
    }
    TextBox {
        objectName: "transcript"
        width: parent.width
        text: block.text.length > block.longestShownText ? block.text.slice(0, block.longestShownText) + "…" : block.text
        label: block.title
    }
}

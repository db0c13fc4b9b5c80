import QtQuick
import Tolmi

/// A text to read and to select, in a rounded field as high as it needs.
Item {
    id: box

    property alias text: content.text
    property TextStyle role: Typography.body
    property real padding: 12
    /// Lines shown; what is longer is elided, and cannot be selected. 0 shows all.
    property int maximumLines: 0
    /// What the text is.
    property string label

    implicitHeight: (maximumLines > 0 ? elided.implicitHeight : content.contentHeight) + 2 * padding - 2

    Plate {
        anchors.fill: parent
        radius: Metrics.chipRadius
        fill: TolmiPalette.surfaceFill
        border: TolmiPalette.surfaceStroke
    }
    TextEdit {
        id: content

        x: box.padding
        y: box.padding - 1
        width: box.width - 2 * box.padding
        visible: box.maximumLines === 0
        readOnly: true
        selectByMouse: true
        activeFocusOnTab: true
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        font: box.role.font
        color: TolmiPalette.primaryText
        selectionColor: TolmiPalette.faded(TolmiPalette.frost, 0.24)
        selectedTextColor: TolmiPalette.primaryText
        renderType: Text.NativeRendering
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: box.label
    }
    StudioText {
        id: elided

        x: box.padding
        y: box.padding - 1
        width: box.width - 2 * box.padding
        visible: box.maximumLines > 0
        role: box.role
        text: box.text
        wrapMode: Text.Wrap
        maximumLineCount: Math.max(1, box.maximumLines)
    }
    FocusRing {
        visible: content.activeFocus
        cornerRadius: Metrics.chipRadius
    }
}

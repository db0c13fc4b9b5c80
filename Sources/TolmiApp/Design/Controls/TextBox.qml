import QtQuick
import Tolmi

/// A read-only, selectable text in a rounded field that grows with it.
Item {
    id: box

    property string text
    property TextStyle role: Typography.body
    property real padding: 12
    /// Maximum number of lines; longer text ends in an ellipsis. 0 shows all.
    property int maximumLines: 0
    /// The accessible name.
    property string label

    implicitHeight: content.contentHeight + 2 * padding - 6

    component Words: TextEdit {
        id: words

        x: box.padding
        y: box.padding - 4
        width: box.width - 2 * box.padding
        readOnly: true
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        font: box.role.font

        LineSpacing {
            document: words.textDocument
            lineHeight: box.role.lineHeight
        }
    }

    /// The part of the text that fits.
    function beginning(): string {
        const isWhole = measure.text.length === text.length;
        if (maximumLines === 0 || (isWhole && measure.lineCount <= maximumLines))
            return text;
        const lineHeight = measure.contentHeight / measure.lineCount;
        const y = (maximumLines - 0.5) * lineHeight;
        const ellipsis = 2 * lineHeight;
        // Right-to-left lines end on the left.
        const end = Math.max(measure.positionAt(ellipsis, y), measure.positionAt(measure.width - ellipsis, y));
        return text.slice(0, end).replace(/\s+$/, "") + "\u2026";
    }

    Plate {
        anchors.fill: parent
        radius: Metrics.chipRadius
        fill: TolmiPalette.surfaceFill
        border: TolmiPalette.surfaceStroke
    }
    Words {
        id: measure

        visible: false
        // Every character is at least a pixel wide, so what is longer cannot be visible and is not laid out.
        text: box.text.slice(0, box.maximumLines * Math.max(0, Math.ceil(width)))
    }
    Words {
        id: content

        objectName: "content"
        text: box.beginning()
        selectByMouse: true
        activeFocusOnTab: true
        color: TolmiPalette.primaryText
        selectionColor: TolmiPalette.faded(TolmiPalette.frost, 0.24)
        selectedTextColor: TolmiPalette.primaryText
        renderType: Text.NativeRendering
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: box.label
    }
    FocusRing {
        visible: content.activeFocus
        cornerRadius: Metrics.chipRadius
    }
}

import QtQuick
import Tolmi

/// A labelled text field. Part of the published set of controls, even if no page uses it.
Column {
    id: row

    property string title
    /// Name of the symbol beside the title.
    property string icon
    property string placeholder
    property string text

    signal edited(string newText)

    spacing: 6
    width: implicitWidth

    Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: row.icon
            size: 15
            color: TolmiPalette.secondaryText
        }
        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            role: Typography.caption
            text: row.title
            color: TolmiPalette.secondaryText
        }
    }
    StudioTextField {
        label: row.title
        placeholderText: row.placeholder
        value: row.text
        onEdited: newText => {
            row.text = newText;
            row.edited(newText);
        }
    }
}

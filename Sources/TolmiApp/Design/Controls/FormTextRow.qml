import QtQuick

/// A row with a text field for technical values.
FormRow {
    id: row

    property alias value: field.value
    property real fieldWidth: 400

    signal edited(string newText)

    StudioTextField {
        id: field

        objectName: "field"
        width: Math.min(row.fieldWidth, row.width - 190)
        isMonospaced: true
        label: row.label
        onEdited: newText => row.edited(newText)
    }
}

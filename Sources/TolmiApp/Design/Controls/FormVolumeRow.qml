import QtQuick

/// A row with a slider and its value as text.
FormRow {
    id: row

    property alias value: slider.value
    property alias text: caption.text

    signal moved(real newValue)

    Row {
        spacing: 8

        StudioSlider {
            id: slider

            objectName: "slider"
            width: Math.min(170, row.width - 220)
            label: row.label
            onMoved: row.moved(value)
        }
        StudioText {
            id: caption

            objectName: "caption"
            anchors.verticalCenter: parent.verticalCenter
            width: 44
            role: Typography.mark
            horizontalAlignment: Text.AlignRight
            color: TolmiPalette.secondaryText
        }
    }
}

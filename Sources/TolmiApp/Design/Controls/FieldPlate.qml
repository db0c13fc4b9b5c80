import QtQuick
import Tolmi

/// Background of a text field.
Plate {
    id: plate

    property bool isFocused: false
    property bool isHovered: false
    /// Whether the field is directly on the window's backdrop.
    property bool isOnBackdrop: false

    radius: Metrics.fieldRadius
    material: isOnBackdrop ? TolmiPalette.material : "transparent"
    fill: TolmiPalette.surfaceFill
    border: isHovered && !isFocused ? TolmiPalette.focusStroke : TolmiPalette.surfaceStroke

    FocusRing {
        anchors.margins: -2
        visible: plate.isFocused
        radius: plate.radius + 2
    }
}

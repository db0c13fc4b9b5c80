import QtQuick
import Tolmi

/// Under a field that one writes into.
Plate {
    id: plate

    property bool isFocused: false
    property bool isHovered: false
    /// Nothing but the backdrop lies under the field.
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

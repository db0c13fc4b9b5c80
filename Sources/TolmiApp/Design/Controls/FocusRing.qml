import QtQuick

/// Around its parent, where the keyboard is.
Rectangle {
    /// Of the parent's corners.
    property real cornerRadius: Metrics.buttonRadius

    anchors.fill: parent
    anchors.margins: -3
    radius: cornerRadius + 3
    color: "transparent"
    border.width: 2
    border.color: TolmiPalette.focusRing
    antialiasing: true
}

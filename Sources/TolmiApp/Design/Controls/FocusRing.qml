import QtQuick

/// The focus indicator around its parent.
Rectangle {
    /// The radius of the parent's corners.
    property real cornerRadius: Metrics.buttonRadius

    anchors.fill: parent
    anchors.margins: -3
    radius: cornerRadius + 3
    color: "transparent"
    border.width: 2
    border.color: TolmiPalette.focusRing
    antialiasing: true
}

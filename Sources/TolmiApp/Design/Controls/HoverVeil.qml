import QtQuick

/// Hover highlight over a control.
Rectangle {
    property bool isShown: false

    anchors.fill: parent
    color: TolmiPalette.focusFill
    opacity: isShown ? 1 : 0
    visible: opacity > 0
    antialiasing: true

    Behavior on opacity {
        NumberAnimation {
            duration: Motion.hoverIn
            easing.type: Easing.OutCubic
        }
    }
}

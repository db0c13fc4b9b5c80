import QtQuick
import QtQuick.Templates as T

/// A thin scroll bar, visible while scrolling or hovered.
T.ScrollBar {
    id: scrollBar

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    visible: size < 1
    // Keyboard and screen reader users scroll by moving the focus.
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: TolmiPalette.focusStroke
        opacity: scrollBar.active || scrollBar.hovered ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: Motion.hoverOut }
        }
    }
}

import QtQuick
import QtQuick.Templates as T

/// A thin bar that shows while one scrolls or points at it.
T.ScrollBar {
    id: scrollBar

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    visible: size < 1
    // The keyboard and screen readers scroll by what they go to.
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

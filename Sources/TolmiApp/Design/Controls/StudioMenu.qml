import QtQuick
import QtQuick.Templates as T

/// A menu of StudioMenuItems.
T.Menu {
    id: menu

    implicitWidth: Math.max(180, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 8
    padding: 6
    delegate: StudioMenuItem { }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.popup
            easing.type: Easing.OutCubic
        }
    }
    background: MenuPlate { }
    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: 168
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
    }
}

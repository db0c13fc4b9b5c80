import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A row of StudioTabButtons with a highlight that slides to the current one.
T.TabBar {
    id: bar

    implicitWidth: contentItem.contentWidth + 6
    implicitHeight: 36
    padding: 3
    spacing: 2
    Accessible.role: Accessible.PageTabList

    background: Plate {
        radius: Metrics.listRowRadius
        material: TolmiPalette.material
        fill: TolmiPalette.surfaceFill
        endFill: TolmiPalette.subtleFill
        border: TolmiPalette.surfaceStroke
    }
    contentItem: ListView {
        model: bar.contentModel
        currentIndex: bar.currentIndex
        spacing: bar.spacing
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        interactive: false
        keyNavigationEnabled: false
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        highlightFollowsCurrentItem: false
        highlight: Item {
            x: bar.currentItem ? bar.currentItem.x : 0
            width: bar.currentItem ? bar.currentItem.width : 0
            height: 30

            Behavior on x {
                SpringAnimation {
                    spring: Motion.orbLevel.spring
                    damping: Motion.orbLevel.damping
                    epsilon: 0.25
                }
            }
            SoftShadow {
                anchors.fill: parent
                radius: Metrics.fieldRadius
                sigma: 3
                offsetY: 1
                color: TolmiPalette.tolmiDynamic(0, 0, 0, 0.14, 0, 0, 0, 0.4)
            }
            Plate {
                anchors.fill: parent
                radius: Metrics.fieldRadius
                fill: TolmiPalette.tolmiDynamic(1, 1, 1, 0.92, 1, 1, 1, 0.2)
                endFill: TolmiPalette.tolmiDynamic(1, 1, 1, 0.7, 1, 1, 1, 0.13)
                border: TolmiPalette.chipStroke
                highlight: Qt.rgba(1, 1, 1, 0.12)
                highlightInset: 1
            }
        }
    }
    Keys.onLeftPressed: decrementCurrentIndex()
    Keys.onRightPressed: incrementCurrentIndex()
}

import QtQuick
import Tolmi

/// The steps of the wizard as chips on a line.
Row {
    id: progress

    property var titles: []
    /// A symbol for each title.
    property var symbols: []
    /// For each title whether its step is done, and how that is said.
    property var done: []
    property var nameOfDone: title => title
    property int currentIndex: 0
    readonly property real chipsWidth: {
        let sum = 0;
        for (let index = 0; index < chips.count; ++index)
            sum += chips.itemAt(index)?.chipWidth ?? 0;
        return sum;
    }
    readonly property real lineWidth: (width - chipsWidth) / Math.max(1, titles.length - 1)

    height: 30

    Repeater {
        id: chips

        model: progress.titles

        Row {
            id: step

            required property string modelData
            required property int index
            readonly property real chipWidth: chip.width
            readonly property bool isDone: progress.done[index] ?? false

            Item {
                id: chip

                width: label.x + label.width + 12
                height: 30
                Accessible.role: Accessible.ListItem
                Accessible.name: step.isDone ? progress.nameOfDone(step.modelData) : step.modelData
                Accessible.checkable: true
                Accessible.checked: step.isDone
                Accessible.selectable: true
                Accessible.selected: step.index === progress.currentIndex

                Plate {
                    anchors.fill: parent
                    radius: Metrics.chipRadius
                    fill: step.index === progress.currentIndex ? TolmiPalette.focusFill : TolmiPalette.chipFill
                    border: TolmiPalette.chipStroke
                }
                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 9
                    name: progress.symbols[step.index] ?? ""
                    size: 15
                    color: step.index > progress.currentIndex ? TolmiPalette.tertiaryText : TolmiPalette.primaryText
                }
                StudioText {
                    id: label

                    anchors.verticalCenter: parent.verticalCenter
                    x: 30
                    role: Typography.caption
                    text: step.modelData
                    color: step.index > progress.currentIndex ? TolmiPalette.tertiaryText : TolmiPalette.primaryText
                    Accessible.ignored: true
                }
            }
            Item {
                width: progress.lineWidth
                height: chip.height
                visible: step.index < progress.titles.length - 1

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 8
                    width: parent.width - 16
                    height: 1
                    color: TolmiPalette.chipStroke
                }
            }
        }
    }
}

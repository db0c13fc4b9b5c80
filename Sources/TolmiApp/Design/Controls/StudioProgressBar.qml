import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A progress bar from 0 to 1; `label` is its accessible name.
T.ProgressBar {
    id: bar

    property string label

    implicitWidth: 170
    implicitHeight: 6
    Accessible.name: label

    background: Rectangle {
        radius: 3
        color: TolmiPalette.surfaceStroke
    }
    contentItem: Item {
        Plate {
            x: bar.mirrored ? parent.width - width : 0
            width: Math.max(6, bar.position * parent.width)
            height: parent.height
            radius: 3
            visible: bar.position > 0
            fill: TolmiPalette.cloud
            endFill: TolmiPalette.frost
            gradientEnd: Qt.point(1, 0)
        }
    }
}

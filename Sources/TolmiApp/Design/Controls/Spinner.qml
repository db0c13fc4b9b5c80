import QtQuick
import Tolmi

/// Busy indicator.
Spokes {
    id: spinner

    implicitWidth: 16
    implicitHeight: 16
    color: TolmiPalette.frost
    Accessible.role: Accessible.Animation
    Accessible.name: ""

    Timer {
        interval: 100
        repeat: true
        running: spinner.visible && !Motion.isReduced
        onTriggered: spinner.phase = (spinner.phase + 1) % 8
    }
}

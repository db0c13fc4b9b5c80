import QtQuick
import Tolmi

BackdropCase {
    name: "PaintedBackdrop"
    hasRenderer: GraphicsInfo.api === GraphicsInfo.Software
    drawing: BackdropPicture {
        readonly property var layers: parent.layers

        ink: layers.ink
        graphite: layers.graphite
        slate: layers.slate
        veilStrong: layers.veilStrong
        veilSoft: layers.veilSoft
        sweepStrong: layers.sweepStrong
        sweepSoft: layers.sweepSoft
        mesh: layers.mesh
        vignette: layers.vignette
        drift: layers.drift
    }
}

import QtQuick
import Tolmi

/// The backdrop of a Studio window. It drifts slowly, except in a hidden or inactive window, with reduced motion, or on
/// the software renderer.
Item {
    id: backdrop

    readonly property bool hasShaders: GraphicsInfo.api !== GraphicsInfo.Software
                                       && GraphicsInfo.api !== GraphicsInfo.Unknown
    readonly property bool isDrifting: sweeping.running
    /// Radius of the backdrop's corners, if it does not fill a window.
    property real cornerRadius: 0

    clip: true

    BackdropDrift {
        id: sweeping

        // A hidden window stays "active" until another one gets the focus, so its visibility is tested too.
        running: backdrop.hasShaders && backdrop.visible && backdrop.Window.active
                 && backdrop.Window.visibility !== Window.Hidden && !Motion.isReduced
    }
    Loader {
        anchors.fill: parent
        sourceComponent: backdrop.hasShaders ? shaded : painted
    }
    Component {
        id: shaded

        ShaderEffect {
            readonly property real drift: sweeping.position
            readonly property size size: Qt.size(width, height)
            readonly property color ink: TolmiPalette.ink
            readonly property color graphite: TolmiPalette.graphite
            readonly property color slate: TolmiPalette.slate
            readonly property color veilStrong: TolmiPalette.backdropVeilStrong
            readonly property color veilSoft: TolmiPalette.backdropVeilSoft
            readonly property color sweepStrong: TolmiPalette.backdropSweepStrong
            readonly property color sweepSoft: TolmiPalette.backdropSweepSoft
            readonly property color meshTint: TolmiPalette.backdropMesh
            readonly property color vignette: TolmiPalette.backdropVignette

            readonly property real cornerRadius: backdrop.cornerRadius

            blending: cornerRadius > 0
            fragmentShader: "qrc:/qt/qml/Tolmi/Resources/backdrop.frag.qsb"
        }
    }
    Component {
        id: painted

        BackdropPicture {
            ink: TolmiPalette.ink
            graphite: TolmiPalette.graphite
            slate: TolmiPalette.slate
            veilStrong: TolmiPalette.backdropVeilStrong
            veilSoft: TolmiPalette.backdropVeilSoft
            sweepStrong: TolmiPalette.backdropSweepStrong
            sweepSoft: TolmiPalette.backdropSweepSoft
            mesh: TolmiPalette.backdropMesh
            vignette: TolmiPalette.backdropVignette
            cornerRadius: backdrop.cornerRadius
        }
    }
}

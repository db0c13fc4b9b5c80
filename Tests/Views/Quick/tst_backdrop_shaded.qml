import QtQuick

BackdropCase {
    name: "ShadedBackdrop"
    hasRenderer: GraphicsInfo.api === GraphicsInfo.OpenGL
    drawing: ShaderEffect {
        readonly property var layers: parent.layers
        readonly property color ink: layers.ink
        readonly property color graphite: layers.graphite
        readonly property color slate: layers.slate
        readonly property color veilStrong: layers.veilStrong
        readonly property color veilSoft: layers.veilSoft
        readonly property color sweepStrong: layers.sweepStrong
        readonly property color sweepSoft: layers.sweepSoft
        readonly property color meshTint: layers.mesh
        readonly property color vignette: layers.vignette
        readonly property real drift: layers.drift
        readonly property real cornerRadius: 0
        readonly property size size: Qt.size(width, height)

        fragmentShader: "qrc:/qt/qml/Tolmi/Resources/backdrop.frag.qsb"
    }
}

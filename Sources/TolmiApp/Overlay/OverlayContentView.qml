import QtQuick
import Tolmi

/// The overlay: an icon that tells the state, and while recording a ring of bars that rises with the voice.
Item {
    id: view

    required property OverlayViewModel viewModel

    readonly property int panelSize: 150
    readonly property int orbDiameter: 54
    readonly property int kind: viewModel.state.kind
    readonly property bool isRecording: kind === DictationState.Recording
    readonly property real clampedLevel: Math.min(1, Math.max(0, viewModel.audioLevel))
    /// The level as it swings in.
    property real shownLevel: clampedLevel
    /// How far the look of recording is there, 0 to 1; it swings in and out with the state.
    property real presence: isRecording ? 1 : 0
    readonly property real limitedPresence: Math.min(1, Math.max(0, presence))
    readonly property bool isTimelineRunning: timeline.running
    readonly property bool isOnScreen: Window.visibility !== Window.Hidden

    // The sign floats over any window on a shade of its own, so its colours are those of the dark scheme always.
    readonly property PaletteColors colors: PaletteColors { scheme: PaletteColors.Dark }
    readonly property color accentColor: accentOf(kind)

    implicitWidth: panelSize
    implicitHeight: panelSize
    Accessible.role: Accessible.Indicator
    Accessible.name: viewModel.helpMessage

    function symbolOf(kind: int): string {
        switch (kind) {
        case DictationState.OptimizingQuality:
            return "dial.high.fill";
        case DictationState.Refining:
            return "sparkles";
        case DictationState.Pasting:
            return "doc.on.clipboard.fill";
        case DictationState.Done:
            return "checkmark.circle.fill";
        case DictationState.Error:
            return "exclamationmark.triangle.fill";
        case DictationState.Transcribing:
            return "";
        default:
            return "mic.fill";
        }
    }
    function pointSizeOf(kind: int): real {
        switch (kind) {
        case DictationState.Recording:
            return 22;
        case DictationState.Idle:
        case DictationState.Pasting:
            return 15;
        case DictationState.Done:
            return 17;
        default:
            return 16;
        }
    }
    function accentOf(kind: int): color {
        switch (kind) {
        case DictationState.Idle:
        case DictationState.Recording:
            return "white";
        case DictationState.Done:
            return colors.frost;
        case DictationState.Error:
            return colors.smoke;
        default:
            return colors.cloud;
        }
    }
    function glowOf(kind: int): color {
        switch (kind) {
        case DictationState.Pasting:
            return colors.cloud;
        case DictationState.Done:
            return colors.frost;
        case DictationState.Error:
            return colors.smoke;
        default:
            return "white";
        }
    }
    function glowOpacityOf(kind: int): real {
        switch (kind) {
        case DictationState.Idle:
            return 0.3;
        case DictationState.Recording:
            return 0.32 + shownLevel * 0.2;
        case DictationState.Pasting:
            return 0.7;
        default:
            return 0.8;
        }
    }

    Behavior on presence {
        SpringAnimation {
            spring: Motion.overlayState.spring
            damping: Motion.overlayState.damping
            epsilon: 0.002
        }
    }
    Behavior on shownLevel {
        SpringAnimation {
            spring: Motion.overlayLevel.spring
            damping: Motion.overlayLevel.damping
            epsilon: 0.002
        }
    }
    Timeline {
        id: timeline

        running: view.isRecording && view.isOnScreen
    }

    // White vanishes over a light window, so a soft shade lies under it; over a dark one it is not seen.
    SoftDisc {
        anchors.fill: parent
        smooth: false
        diameter: 122
        sigma: 7
        color: "black"
        centerAlpha: 0.6
        middleAlpha: 0.54
        middle: 0.76
        opacity: view.limitedPresence
        visible: opacity > 0
    }
    SoftDisc {
        anchors.centerIn: parent
        width: 120
        height: 120
        smooth: false
        diameter: 72
        sigma: 9
        color: "black"
        centerAlpha: 0.46
        middleAlpha: 0.32
        middle: 0.6
        opacity: 1 - view.limitedPresence
        visible: opacity > 0
    }

    // The blur of the halo grows with the level: from the picture with the smaller one to that with the larger.
    SoftDisc {
        anchors.fill: parent
        smooth: false
        diameter: 120
        sigma: 12
        opacity: (0.2 + view.shownLevel * 0.16) * (1 - view.shownLevel) * view.limitedPresence
        visible: opacity > 0
    }
    SoftDisc {
        anchors.fill: parent
        smooth: false
        diameter: 120
        sigma: 18
        opacity: (0.2 + view.shownLevel * 0.16) * view.shownLevel * view.limitedPresence
        visible: opacity > 0
    }
    LevelRing {
        anchors.fill: parent
        smooth: false
        visible: view.isRecording
        level: view.clampedLevel
        seconds: timeline.seconds
        circleScale: center.swing * (0.6 + view.shownLevel * 0.9)
        circleAlpha: view.shownLevel * 0.55 * (1 - view.shownLevel * 0.5)
    }
    Item {
        id: center

        readonly property real swing: (view.isRecording ? 1 + view.shownLevel * 0.06 : 1) * (1 - 0.12 * Math.abs(view.presence - (view.isRecording ? 1 : 0)))

        /// Those of every icon, and under the spinner the one of a control of the system.
        readonly property var spinnerShadows: [
            { color: "black", opacity: 0.28, radius: 4, offset: 2 },
            { color: view.accentColor, opacity: 0.15, radius: 8, offset: 3 },
            { color: "black", opacity: 0.33, radius: 2, offset: 0 }
        ]

        anchors.centerIn: parent
        width: 100
        height: 100

        OverlayIcon {
            objectName: "icon"
            anchors.centerIn: parent
            visible: symbol !== ""
            symbolScale: center.swing
            symbol: view.symbolOf(view.kind)
            pointSize: view.pointSizeOf(view.kind)
            color: view.kind === DictationState.Idle ? Qt.rgba(1, 1, 1, 0.9) : "white"
            endColor: view.isRecording ? view.colors.faded(view.colors.cloud, 0.9) : color
            accent: view.accentColor
            accentOpacity: view.isRecording ? 0.36 + view.shownLevel * 0.2 : 0.15
            glow: view.glowOf(view.kind)
            glowOpacity: view.glowOpacityOf(view.kind)
            glowRadius: view.isRecording ? 5 : 4
        }
        Repeater {
            model: spinner.visible ? center.spinnerShadows : []

            Spokes {
                required property var modelData

                anchors.centerIn: parent
                anchors.verticalCenterOffset: modelData.offset
                width: 80
                height: 80
                smooth: false
                side: spinner.width
                phase: spinner.phase
                blur: modelData.radius
                color: modelData.color
                opacity: modelData.opacity
            }
        }
        Spinner {
            id: spinner

            objectName: "spinner"
            scale: center.swing
            anchors.centerIn: parent
            width: 18
            height: 18
            visible: view.kind === DictationState.Transcribing && view.isOnScreen
            color: view.colors.frost
        }
    }

    HoverHandler {
        id: hover
    }
    OverlayToolTip {
        text: view.viewModel.helpMessage
        isShown: view.isOnScreen && hover.hovered
        anchorItem: view
    }
}

import QtQuick
import Tolmi

/// A sphere that pulses with the voice, with a halo and a ring of bars. Draws no frames while inactive.
Item {
    id: orb

    property bool isActive: false
    /// Voice level, 0 to 1.
    property real level: 0
    readonly property real clampedLevel: Math.min(1, Math.max(0, level))
    /// The animated level.
    property real shownLevel: clampedLevel
    readonly property int orbDiameter: 56
    readonly property real seconds: timeline.seconds

    implicitWidth: 190
    implicitHeight: 190
    opacity: isActive ? 1 : 0.6
    Accessible.role: Accessible.Indicator
    Accessible.name: ""

    Behavior on shownLevel {
        enabled: orb.isActive
        SpringAnimation {
            spring: Motion.orbLevel.spring
            damping: Motion.orbLevel.damping
            epsilon: 0.002
        }
    }
    Timeline {
        id: timeline

        running: orb.isActive && orb.visible
    }
    SoftDisc {
        anchors.centerIn: parent
        width: 272
        height: 272
        visible: orb.isActive
        diameter: 176
        sigma: 14
        color: TolmiPalette.frost
        // In the light scheme the light bars are visible only against a dark halo.
        centerAlpha: TolmiPalette.isDark ? 0.26 : 0.5
        middleAlpha: TolmiPalette.isDark ? 0.13 : 0.36
        middle: 0.56
        scale: 1 + 0.14 * orb.shownLevel
    }
    LevelRing {
        anchors.fill: parent
        visible: orb.isActive
        isOrb: true
        level: orb.shownLevel
        seconds: orb.isActive ? timeline.seconds : 0
    }
    Item {
        anchors.centerIn: parent
        width: orb.orbDiameter
        height: orb.orbDiameter
        scale: orb.isActive ? 1 + 0.04 * Math.sin(timeline.seconds * 2.1) + orb.shownLevel * 0.08 : 0.88

        // Cross-fades from the narrow to the wide glow as the level rises.
        SoftDisc {
            anchors.centerIn: parent
            width: 140
            height: 140
            visible: orb.isActive
            diameter: orb.orbDiameter
            sigma: 7
            middleAlpha: 1
            edgeAlpha: 1
            opacity: (0.22 + orb.shownLevel * 0.18) * (1 - orb.shownLevel)
        }
        SoftDisc {
            anchors.centerIn: parent
            width: 140
            height: 140
            visible: orb.isActive
            diameter: orb.orbDiameter
            sigma: 12
            middleAlpha: 1
            edgeAlpha: 1
            opacity: (0.22 + orb.shownLevel * 0.18) * orb.shownLevel
        }
        SoftDisc {
            anchors.centerIn: parent
            width: 90
            height: 90
            visible: !orb.isActive
            diameter: orb.orbDiameter
            sigma: 3
            middleAlpha: 1
            edgeAlpha: 1
            opacity: 0.08
        }
        Sphere {
            anchors.fill: parent
            light: TolmiPalette.faded(TolmiPalette.frost, 0.96)
            body: TolmiPalette.faded(TolmiPalette.cloud, 0.92)
            shade: TolmiPalette.faded(TolmiPalette.slate, 0.94)
            ring: Qt.rgba(1, 1, 1, 0.26)
        }
    }
}

pragma Singleton

import QtQuick

/// Animation parameters. Durations are in milliseconds.
QtObject {
    /// Whether reduced motion is enabled on the desktop; set by the program.
    property bool isReduced: false

    readonly property int hoverIn: 120
    readonly property int hoverOut: 180
    readonly property int toggle: 160
    readonly property int popup: 120
    readonly property int dialogIn: 220
    readonly property int dialogOut: 140
    readonly property int workspace: 140

    readonly property var overlayState: spring(0.4, 0.75)
    readonly property var overlayLevel: spring(0.35, 0.8)
    readonly property var orbLevel: spring(0.35, 0.825)
    readonly property var buttonPress: spring(0.3, 0.8)
    readonly property var standard: spring(0.55, 0.825)

    /// Converts a spring given by response in seconds and damping fraction to the parameters of SpringAnimation, whose
    /// steps are v += spring * distance - damping * v and x += 0.016 * v.
    function spring(response: double, dampingFraction: double): var {
        const step = 0.016;
        const frequency = 2 * Math.PI / response;
        const decay = Math.exp(-dampingFraction * frequency * step);
        const turn = Math.cos(frequency * Math.sqrt(1 - dampingFraction * dampingFraction) * step);
        const damping = 1 - decay * decay;
        return { spring: (2 - damping - 2 * decay * turn) / step, damping: damping };
    }
}

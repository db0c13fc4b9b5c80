import QtQuick
import Tolmi

/// A symbol of the overlay with its three shadows: a dark one, one in the accent of the state, and its own. Colours
/// of shadows count without their opacity, which is given apart, so that it can change without drawing anew.
Item {
    id: icon

    property string symbol
    /// Size of the symbol in points of a text.
    property real pointSize: 16
    property color color: "white"
    property color endColor: color
    property color accent: "white"
    property real accentOpacity: 0.15
    property color glow: "white"
    property real glowOpacity: 0.3
    property real glowRadius: 4
    /// Of the symbol alone. The shadows keep their size: they are softer than the symbol ever grows, and are copied where
    /// stretching them would wake several threads, which costs more than all the drawing.
    property real symbolScale: 1
    /// The square that a symbol of a text's size fills.
    readonly property real side: Math.round(pointSize * 1.26)

    // Room for the widest shadow, three of its standard deviations on each side, and no more.
    width: 80
    height: 80

    Symbol {
        anchors.fill: parent
        anchors.topMargin: 2
        anchors.bottomMargin: -2
        smooth: false
        name: icon.symbol
        size: icon.side
        stroke: 2
        blur: 4
        color: "black"
        opacity: 0.28
    }
    Symbol {
        anchors.fill: parent
        anchors.topMargin: 3
        anchors.bottomMargin: -3
        smooth: false
        name: icon.symbol
        size: icon.side
        stroke: 2
        blur: 8
        color: icon.accent
        opacity: icon.accentOpacity
    }
    Symbol {
        anchors.fill: parent
        smooth: false
        name: icon.symbol
        size: icon.side
        stroke: 2
        blur: icon.glowRadius
        color: icon.glow
        opacity: icon.glowOpacity
    }
    Symbol {
        anchors.centerIn: parent
        scale: icon.symbolScale
        name: icon.symbol
        size: icon.side
        stroke: 2
        color: icon.color
        endColor: icon.endColor
    }
}

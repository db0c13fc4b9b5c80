import QtQuick
import Tolmi

/// Hands the look on to the colours and the motion of this engine.
QtObject {
    id: link

    /// The program's ViewAppearance.
    required property QtObject appearance

    readonly property Binding colors: Binding {
        target: TolmiPalette
        property: "scheme"
        value: link.appearance.isDark ? PaletteColors.Dark : PaletteColors.Light
    }
    readonly property Binding motion: Binding {
        target: Motion
        property: "isReduced"
        value: link.appearance.isMotionReduced
    }
}

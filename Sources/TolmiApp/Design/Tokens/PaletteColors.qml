import QtQuick

/// All colours of the program in one of its two schemes. All are shades of grey.
QtObject {
    enum Scheme { Light, Dark }

    property int scheme: PaletteColors.Dark
    readonly property bool isDark: scheme === PaletteColors.Dark

    // Opaque shades, named after the dark scheme; in the light one ink is nearly white and frost nearly black.
    readonly property color ink: tolmiDynamic(0.98, 0.98, 0.985, 1, 0.02, 0.02, 0.03, 1)
    readonly property color graphite: tolmiDynamic(0.93, 0.93, 0.94, 1, 0.08, 0.08, 0.09, 1)
    readonly property color slate: tolmiDynamic(0.86, 0.86, 0.87, 1, 0.14, 0.14, 0.15, 1)
    readonly property color smoke: tolmiDynamic(0.34, 0.34, 0.36, 1, 0.56, 0.56, 0.58, 1)
    readonly property color cloud: tolmiDynamic(0.2, 0.2, 0.22, 1, 0.84, 0.84, 0.86, 1)
    readonly property color frost: tolmiDynamic(0.08, 0.08, 0.1, 1, 0.97, 0.97, 0.98, 1)

    // Translucent tints.
    readonly property color panelFill: tint(0.06, 0.06)
    readonly property color panelSecondaryFill: tint(0.02, 0.015)
    readonly property color panelStroke: tint(0.18, 0.24)
    readonly property color panelEdgeStroke: tolmiDynamic(1, 1, 1, 0.45, 0, 0, 0, 0.32)
    readonly property color panelInnerShadow: tolmiDynamic(0, 0, 0, 0.12, 0, 0, 0, 0.34)
    readonly property color focusFill: tint(0.1, 0.11)
    readonly property color focusStroke: tint(0.3, 0.36)
    readonly property color surfaceFill: tint(0.08, 0.08)
    readonly property color surfaceStroke: tint(0.18, 0.16)
    readonly property color chipFill: tint(0.1, 0.1)
    readonly property color chipStroke: tint(0.16, 0.16)
    readonly property color keycapFill: tint(0.1, 0.1)
    readonly property color keycapStroke: tint(0.18, 0.15)
    readonly property color editorFill: tint(0.06, 0.06)
    readonly property color editorStroke: tint(0.18, 0.18)
    readonly property color subtleFill: tint(0.05, 0.05)
    readonly property color backdropVeilStrong: tint(0.1, 0.1)
    readonly property color backdropVeilSoft: tint(0.04, 0.04)
    readonly property color backdropSweepStrong: tint(0.1, 0.12)
    readonly property color backdropSweepSoft: tint(0.07, 0.08)
    readonly property color backdropMesh: tint(0.05, 0.045)
    readonly property color backdropVignette: tolmiDynamic(0, 0, 0, 0.12, 0, 0, 0, 0.3)

    // Aliases. They and the gradients are part of the palette's published names, used or not.
    readonly property color base: graphite
    readonly property color baseDeep: ink
    readonly property color cobalt: cloud
    readonly property color mint: cloud
    readonly property color cyan: frost
    readonly property color coral: smoke
    readonly property color lilac: smoke

    // Linear gradients, first to last colour.
    readonly property var backgroundGradient: [ink, graphite, slate]
    readonly property var accentGradient: [cloud, frost]
    readonly property var warningGradient: [slate, graphite]

    // Text colours with a contrast of at least 4.5:1 on every backdrop, including the sweeps.
    readonly property color primaryText: frost
    readonly property color secondaryText: faded(cloud, isDark ? 0.9 : 0.92)
    readonly property color tertiaryText: isDark ? faded(cloud, 0.78) : smoke
    readonly property color focusRing: faded(frost, 0.8)

    // Materials of panels and menus.
    readonly property color material: tolmiDynamic(1, 1, 1, 0.64, 0.1, 0.1, 0.11, 0.34)
    readonly property color menuMaterial: tolmiDynamic(0.975, 0.975, 0.98, 0.98, 0.11, 0.11, 0.12, 0.98)

    /// The one of two sRGB colours for the current scheme; components are 0 to 1.
    function tolmiDynamic(lightRed: double, lightGreen: double, lightBlue: double, lightAlpha: double,
                          darkRed: double, darkGreen: double, darkBlue: double, darkAlpha: double): color {
        return isDark ? Qt.rgba(darkRed, darkGreen, darkBlue, darkAlpha)
                      : Qt.rgba(lightRed, lightGreen, lightBlue, lightAlpha);
    }

    /// Black in the light scheme, white in the dark one.
    function tint(lightAlpha: double, darkAlpha: double): color {
        return tolmiDynamic(0, 0, 0, lightAlpha, 1, 1, 1, darkAlpha);
    }

    /// A colour with its opacity multiplied.
    function faded(shade: color, opacity: double): color {
        return Qt.rgba(shade.r, shade.g, shade.b, shade.a * opacity);
    }
}

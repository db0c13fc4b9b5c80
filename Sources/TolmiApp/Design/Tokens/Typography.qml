pragma Singleton

import QtQuick

/// The text styles by role. Sizes are in pixels.
QtObject {
    id: typography

    readonly property string interfaceFamily: "Inter"
    readonly property string displayFamily: "Inter Display"
    readonly property string monospaceFamily: "JetBrains Mono"

    /// Title of a workspace.
    readonly property TextStyle title: TextStyle {
        font: typography.face(typography.displayFamily, 26, Font.DemiBold, -0.2)
        lineHeight: 32
    }
    readonly property TextStyle sheetTitle: TextStyle {
        font: typography.face(typography.displayFamily, 20, Font.DemiBold, 0)
        lineHeight: 26
    }
    /// Heading of a card.
    readonly property TextStyle head: TextStyle {
        font: typography.face(typography.interfaceFamily, 15, Font.DemiBold, 0)
        lineHeight: 20
    }
    readonly property TextStyle body: TextStyle {
        font: typography.face(typography.interfaceFamily, 13, Font.Normal, 0)
        lineHeight: 20
    }
    readonly property TextStyle strong: TextStyle {
        font: typography.face(typography.interfaceFamily, 13, Font.DemiBold, 0.1)
        lineHeight: 18
    }
    readonly property TextStyle navigation: TextStyle {
        font: typography.face(typography.interfaceFamily, 13, Font.DemiBold, 0.25)
        lineHeight: 18
    }
    readonly property TextStyle button: TextStyle {
        font: typography.face(typography.interfaceFamily, 13, Font.DemiBold, 0.4)
        lineHeight: 16
    }
    readonly property TextStyle smallButton: TextStyle {
        font: typography.face(typography.interfaceFamily, 12, Font.DemiBold, 0.3)
        lineHeight: 16
    }
    /// Value of a control.
    readonly property TextStyle value: TextStyle {
        font: typography.face(typography.interfaceFamily, 13, Font.Medium, 0)
        lineHeight: 18
    }
    readonly property TextStyle caption: TextStyle {
        font: typography.face(typography.interfaceFamily, 12, Font.Normal, 0.05)
        lineHeight: 16
    }
    readonly property TextStyle sectionHeader: TextStyle {
        font: typography.face(typography.interfaceFamily, 12, Font.DemiBold, 0.2)
        lineHeight: 16
    }
    readonly property TextStyle pill: TextStyle {
        font: typography.face(typography.interfaceFamily, 11, Font.DemiBold, 0.3)
        lineHeight: 14
    }
    /// Small secondary text.
    readonly property TextStyle mark: TextStyle {
        font: typography.face(typography.interfaceFamily, 11, Font.Medium, 0.3)
        lineHeight: 14
    }
    readonly property TextStyle keyCap: TextStyle {
        font: typography.face(typography.interfaceFamily, 11, Font.DemiBold, 0.2)
        lineHeight: 14
    }
    readonly property TextStyle monospace: TextStyle {
        font: typography.face(typography.monospaceFamily, 12, Font.Normal, 0)
        lineHeight: 16
    }

    function face(family: string, pixelSize: int, weight: int, tracking: double): font {
        return Qt.font({
            family: family, pixelSize: pixelSize, weight: weight, letterSpacing: tracking,
            hintingPreference: Font.PreferNoHinting
        });
    }
}

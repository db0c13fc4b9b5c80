pragma Singleton

/// The palette of the windows of one QML engine. The program sets the scheme.
PaletteColors { }

pragma Singleton

/// The colours that the windows of one engine are drawn in. The program sets the scheme, and everything follows.
PaletteColors { }

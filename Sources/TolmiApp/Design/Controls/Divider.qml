import QtQuick

/// A separator line between two rows or sections.
Rectangle {
    implicitHeight: 1
    color: TolmiPalette.chipFill
}

import QtQuick

/// A line between two rows or two sections.
Rectangle {
    implicitHeight: 1
    color: TolmiPalette.chipFill
}

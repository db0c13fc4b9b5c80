import QtQuick

/// The text style of one role.
QtObject {
    property font font
    /// Height of a line's box in pixels.
    property int lineHeight
}

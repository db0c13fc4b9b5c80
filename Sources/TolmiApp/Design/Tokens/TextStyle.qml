import QtQuick

/// How a text of one role is set.
QtObject {
    property font font
    /// Height of a line's box in pixels.
    property int lineHeight
}

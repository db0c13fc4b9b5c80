pragma Singleton

import QtQuick

/// Activates controls by keyboard, once per press, ignoring auto-repeat.
QtObject {
    /// For `Keys.onPressed`. Return and Enter call `press`; the space bar is left to the control.
    function pressed(event, press) {
        const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
        if (!isReturn && event.key !== Qt.Key_Space)
            return;
        if (isReturn && !event.isAutoRepeat)
            press();
        event.accepted = isReturn || event.isAutoRepeat;
    }
    /// For `Keys.onReleased`. Auto-repeat also sends releases.
    function released(event) {
        if (event.key === Qt.Key_Space && event.isAutoRepeat)
            event.accepted = true;
    }
}

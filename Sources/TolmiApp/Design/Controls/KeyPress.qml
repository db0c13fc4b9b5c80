pragma Singleton

import QtQuick

/// How keys press a control: each press once, however long the key is held.
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
    /// For `Keys.onReleased`. A keyboard that repeats a key releases it each time.
    function released(event) {
        if (event.key === Qt.Key_Space && event.isAutoRepeat)
            event.accepted = true;
    }
}

import QtQuick

/// The time for a drawing that moves while something goes on: advances at most 60 times a second, and not at all, without
/// a timer or a frame, while it is not running.
FrameAnimation {
    /// Seconds since the beginning of 2001.
    property double seconds: 0

    property double startedAt: 0
    property double shownAt: 0

    onRunningChanged: {
        if (running) {
            startedAt = Date.now() / 1000 - 978307200;
            shownAt = -1;
        }
    }
    onTriggered: {
        // A little less than a sixtieth, so that a display of exactly 60 Hz does not lose every second frame.
        if (elapsedTime - shownAt < 1 / 62)
            return;
        shownAt = elapsedTime;
        seconds = startedAt + elapsedTime;
    }
}

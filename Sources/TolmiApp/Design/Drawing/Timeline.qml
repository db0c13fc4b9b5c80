import QtQuick

/// The time for an animated drawing. Advances at most 60 times a second while running; causes no timers or frames
/// otherwise.
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
        // Slightly less than a sixtieth, so that a 60 Hz display does not skip every other frame.
        if (elapsedTime - shownAt < 1 / 62)
            return;
        shownAt = elapsedTime;
        seconds = startedAt + elapsedTime;
    }
}

import QtQuick
import QtTest
import Tolmi

TestCase {
    id: test

    property var windows: []

    name: "Backdrop"
    when: windowShown
    width: 100
    height: 100
    visible: true

    Component {
        id: windowComponent

        Window {
            readonly property alias backdrop: view

            width: 200
            height: 200

            AnimatedBackdropView {
                id: view

                anchors.fill: parent
            }
        }
    }

    /// Without a parent, because it would be active together with the tests' window.
    function makeWindow() {
        windows.push(windowComponent.createObject(null));
        return windows[windows.length - 1];
    }
    function makeActiveWindow() {
        const window = makeWindow();
        activate(window);
        tryCompare(window.backdrop, "isDrifting", true);
        return window;
    }
    function activate(window) {
        window.show();
        window.requestActivate();
        tryCompare(window, "active", true);
    }
    function cleanup() {
        Motion.isReduced = false;
        for (const window of windows.splice(0))
            window.destroy();
    }

    function test_driftsInAnActiveWindow() {
        const window = makeActiveWindow();
        verify(window.backdrop.hasShaders);
    }
    function test_isStillInAHiddenWindow() {
        const window = makeActiveWindow();
        window.hide();
        tryCompare(window.backdrop, "isDrifting", false);
        activate(window);
        tryCompare(window.backdrop, "isDrifting", true);
    }
    function test_isStillWhileAnotherWindowIsActive() {
        const window = makeActiveWindow();
        const other = makeActiveWindow();
        tryCompare(window.backdrop, "isDrifting", false);
        activate(window);
        tryCompare(window.backdrop, "isDrifting", true);
    }
    function test_isStillBeforeItsWindowIsShown() {
        const window = makeWindow();
        verify(!window.backdrop.isDrifting);
    }
    function test_isStillWhileInvisible() {
        const window = makeActiveWindow();
        window.backdrop.visible = false;
        verify(!window.backdrop.isDrifting);
    }
    function test_isStillWithReducedMotion() {
        const window = makeActiveWindow();
        Motion.isReduced = true;
        verify(!window.backdrop.isDrifting);
    }
}

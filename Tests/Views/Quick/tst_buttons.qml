import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Buttons"
    when: windowShown
    width: 400
    height: 300
    visible: true

    KeyHolder {
        id: keyboard
    }
    Component {
        id: column

        Column {
            property int presses: 0

            StudioButton {
                objectName: "first"
                text: "Continue"
                onClicked: parent.presses += 1
            }
            IconButton {
                objectName: "icon"
                symbol: "trash"
                toolTip: "Delete"
                onClicked: parent.presses += 1
            }
            SidebarRow {
                objectName: "row"
                symbol: "gear"
                text: "Settings"
                onClicked: parent.presses += 1
            }
            ProfileChip {
                objectName: "chip"
                text: "Ana"
                onClicked: parent.presses += 1
            }
            PopupActionRow {
                objectName: "action"
                text: "Quit"
                onClicked: parent.presses += 1
            }
        }
    }

    function test_keysPress_data() {
        return [{ tag: "first" }, { tag: "icon" }, { tag: "row" }, { tag: "chip" }];
    }
    function test_keysPress(data) {
        const page = createTemporaryObject(column, test);
        const button = findChild(page, data.tag);
        button.forceActiveFocus(Qt.TabFocusReason);
        verify(button.visualFocus);
        keyClick(Qt.Key_Space);
        compare(page.presses, 1);
        keyClick(Qt.Key_Return);
        compare(page.presses, 2);
        keyClick(Qt.Key_Enter);
        compare(page.presses, 3);
        mouseClick(button);
        compare(page.presses, 4);
    }
    function test_heldKeyPressesOnce_data() {
        const rows = [];
        for (const name of ["first", "icon", "row", "chip", "action"]) {
            for (const [tag, key] of [["space", Qt.Key_Space], ["return", Qt.Key_Return], ["enter", Qt.Key_Enter]])
                rows.push({ tag: name + " " + tag, name: name, key: key });
        }
        return rows;
    }
    function test_heldKeyPressesOnce(data) {
        const page = createTemporaryObject(column, test);
        const button = findChild(page, data.name);
        button.forceActiveFocus(Qt.TabFocusReason);
        keyboard.hold(button, data.key, 5);
        compare(page.presses, 1);
        keyboard.hold(button, data.key, 5);
        compare(page.presses, 2);
    }
    function test_tabWalksThroughAll() {
        const page = createTemporaryObject(column, test);
        findChild(page, "first").forceActiveFocus(Qt.TabFocusReason);
        for (const next of ["icon", "row", "chip"]) {
            keyClick(Qt.Key_Tab);
            verify(findChild(page, next).activeFocus, next);
        }
    }
    function test_disabledDoesNothing() {
        const page = createTemporaryObject(column, test);
        const button = findChild(page, "first");
        button.enabled = false;
        mouseClick(button);
        compare(page.presses, 0);
        fuzzyCompare(button.opacity, 0.42, 0.001);
    }
    function test_pressedLooksPressed() {
        const page = createTemporaryObject(column, test);
        const button = findChild(page, "first");
        mousePress(button);
        // Both are on a spring.
        verify(button.opacity > 0.95);
        tryVerify(() => Math.abs(button.opacity - 0.9) < 0.001);
        tryVerify(() => Math.abs(button.background.scale - 0.98) < 0.001);
        mouseRelease(button);
        verify(button.opacity < 0.95);
        tryVerify(() => Math.abs(button.opacity - 1) < 0.001);
        tryVerify(() => Math.abs(button.background.scale - 1) < 0.001);
    }
    function test_wideFillsItsParent() {
        const page = createTemporaryObject(column, test, { width: 320 });
        const button = findChild(page, "first");
        verify(button.width < 320);
        button.isWide = true;
        compare(button.width, 320);
    }
    function test_buttonFitsItsText() {
        const page = createTemporaryObject(column, test);
        const button = findChild(page, "first");
        const narrow = button.width;
        button.symbol = "mic.fill";
        compare(button.width, narrow + 23);
    }
    function test_namesForThoseWhoCannotSee() {
        const page = createTemporaryObject(column, test);
        compare(findChild(page, "first").Accessible.name, "Continue");
        compare(findChild(page, "icon").Accessible.name, "Delete");
        compare(findChild(page, "row").Accessible.role, Accessible.ListItem);
    }
}

import QtQuick
import QtTest
import Tolmi

TestCase {
    id: test

    name: "Choices"
    when: windowShown
    width: 400
    height: 400
    visible: true

    readonly property var options: [
        { value: "ro", text: "Romanian" }, { value: "en", text: "English" }, { value: "auto", text: "Auto-detect" }
    ]

    Component {
        id: picker

        StudioPicker {
            property var picks: []

            options: test.options
            value: "en"
            label: "Language"
            onPicked: newValue => {
                picks.push(newValue);
                value = newValue;
            }
        }
    }
    Component {
        id: refusingPicker

        StudioPicker {
            options: test.options
            value: "en"
        }
    }
    Component {
        id: toggle

        StudioSwitch { label: "Refine" }
    }
    Component {
        id: checkBox

        StudioCheckBox { text: "Select" }
    }
    Component {
        id: slider

        StudioSlider { label: "Volume" }
    }
    Component {
        id: tabs

        StudioTabBar {
            StudioTabButton { text: "General" }
            StudioTabButton { text: "Engine" }
            StudioTabButton { text: "Refinement" }
        }
    }
    Component {
        id: dialog

        StudioDialog {
            title: "Clear all?"
            message: "Everything goes."
            confirmText: "Clear"
            cancelText: "Cancel"
            confirmTone: StudioButton.Danger
        }
    }

    Component {
        id: spyComponent

        SignalSpy { }
    }

    function test_pickerShowsItsValue() {
        const control = createTemporaryObject(picker, test);
        compare(control.displayText, "English");
        control.value = "auto";
        compare(control.displayText, "Auto-detect");
    }
    function test_pickerWithUnknownValueIsEmpty() {
        const control = createTemporaryObject(picker, test, { value: "sv" });
        compare(control.currentIndex, -1);
        compare(control.displayText, "");
        compare(control.value, "sv");
    }
    function test_pickerByKeyboard() {
        const control = createTemporaryObject(picker, test);
        control.forceActiveFocus(Qt.TabFocusReason);
        verify(control.visualFocus);
        keyClick(Qt.Key_Space);
        tryVerify(() => control.popup.opened);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => !control.popup.visible);
        compare(control.picks, ["auto"]);
        compare(control.displayText, "Auto-detect");
    }
    function test_pickerOpensByReturn() {
        const control = createTemporaryObject(picker, test);
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        tryVerify(() => control.popup.opened);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => !control.popup.visible);
        compare(control.picks, ["auto"]);
    }
    function test_pickerByPointer() {
        const control = createTemporaryObject(picker, test);
        mouseClick(control);
        tryVerify(() => control.popup.opened);
        const list = control.popup.contentItem;
        tryVerify(() => list.itemAtIndex(0) !== null);
        mouseClick(list.itemAtIndex(0));
        compare(control.picks, ["ro"]);
    }
    function test_pickerFollowsAStoreThatRejects() {
        const control = createTemporaryObject(refusingPicker, test);
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Down);
        compare(control.displayText, "English");
    }
    function test_pickerRelabelsItsRows() {
        const control = createTemporaryObject(picker, test);
        control.options = [{ value: "ro", text: "Romana" }, { value: "en", text: "Engleza" }];
        compare(control.displayText, "Engleza");
    }

    function test_switch() {
        const control = createTemporaryObject(toggle, test);
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        verify(control.checked);
        keyClick(Qt.Key_Return);
        verify(!control.checked);
        mouseClick(control);
        verify(control.checked);
        compare(control.Accessible.name, "Refine");
    }
    function test_checkBox() {
        const control = createTemporaryObject(checkBox, test);
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        verify(control.checked);
        mouseClick(control);
        verify(!control.checked);
        verify(control.implicitWidth > 40);
    }
    function test_slider() {
        const control = createTemporaryObject(slider, test);
        const spy = createTemporaryObject(spyComponent, test, { target: control, signalName: "moved" });
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Right);
        fuzzyCompare(control.value, 0.1, 1e-9);
        compare(spy.count, 2);
        compare(control.width, 170);
        mouseClick(control, control.width / 2, 10);
        fuzzyCompare(control.value, 0.5, 1e-9);
    }
    function test_tabs() {
        const control = createTemporaryObject(tabs, test);
        compare(control.currentIndex, 0);
        mouseClick(control.itemAt(2));
        compare(control.currentIndex, 2);
        keyClick(Qt.Key_Left);
        compare(control.currentIndex, 1);
        keyClick(Qt.Key_Right);
        compare(control.currentIndex, 2);
        verify(control.itemAt(2).checked);
    }

    function test_dialogStartsOnCancel() {
        const control = createTemporaryObject(dialog, test);
        const spy = createTemporaryObject(spyComponent, test, { target: control, signalName: "rejected" });
        control.open();
        tryVerify(() => control.opened);
        keyClick(Qt.Key_Return);
        tryVerify(() => !control.visible);
        compare(spy.count, 1);
    }
    function test_dialogConfirms() {
        const control = createTemporaryObject(dialog, test);
        const spy = createTemporaryObject(spyComponent, test, { target: control, signalName: "accepted" });
        control.open();
        tryVerify(() => control.opened);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Space);
        tryVerify(() => !control.visible);
        compare(spy.count, 1);
    }
    function test_tabCountsWhileTheDialogFadesIn() {
        const control = createTemporaryObject(dialog, test);
        const spy = createTemporaryObject(spyComponent, test, { target: control, signalName: "accepted" });
        control.open();
        keyClick(Qt.Key_Tab);
        verify(!control.opened);
        tryVerify(() => control.opened);
        keyClick(Qt.Key_Space);
        tryVerify(() => !control.visible);
        compare(spy.count, 1);
    }
    function test_escapeLeavesTheDialog() {
        const control = createTemporaryObject(dialog, test);
        control.open();
        tryVerify(() => control.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !control.visible);
    }
}

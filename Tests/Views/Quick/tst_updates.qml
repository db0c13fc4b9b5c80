import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    readonly property string path: "/home/user/Downloads/tolmi-2.0.tar.xz"

    name: "Updates"
    when: windowShown
    width: 500
    height: 500
    visible: true

    Component {
        id: fixtureComponent

        UpdateDialogFixture { }
    }
    Component {
        id: viewComponent

        UpdateDialogView {
            width: implicitWidth
            height: implicitHeight
        }
    }

    /// Kept until the end, because the view must be destroyed before its model.
    function makeFixture() {
        return fixtureComponent.createObject(test);
    }
    function show(fixture) {
        return createTemporaryObject(viewComponent, test, { model: fixture.model });
    }
    /// The visible items at and below `item` that fulfil the condition.
    function seen(item, condition) {
        let found = item.visible && condition(item) ? [item] : [];
        for (let index = 0; item.visible && index < item.children.length; ++index)
            found = found.concat(seen(item.children[index], condition));
        return found;
    }
    function buttons(view) {
        return seen(view, item => item instanceof StudioButton);
    }
    function button(view, text) {
        return buttons(view).find(item => item.text === text);
    }
    function showsText(view, text) {
        return seen(view, item => item instanceof StudioText && item.text === text).length === 1;
    }
    function isSpinning(view) {
        return seen(view, item => item instanceof Spinner).length > 0;
    }

    function test_checking() {
        const fixture = makeFixture();
        fixture.check();
        const view = show(fixture);
        verify(showsText(view, "Checking for updates..."));
        verify(isSpinning(view));
        compare(buttons(view).map(item => item.text), ["Cancel"]);
        mouseClick(button(view, "Cancel"));
        compare(fixture.answers, ["dismiss"]);
    }
    function test_found() {
        const fixture = makeFixture();
        fixture.find("2.0", "Faster\nand better");
        const view = show(fixture);
        verify(!isSpinning(view));
        verify(showsText(view, "Tolmi 2.0 is available"));
        verify(showsText(view, "You have version 1.0. Do you want to download the new one?"));
        const notes = seen(view, item => item instanceof StudioTextArea)[0];
        compare(notes.text, "Faster\nand better");
        compare(notes.label, "What is new");
        compare(buttons(view).map(item => item.text), ["Later", "Download"]);
        mouseClick(button(view, "Download"));
        mouseClick(button(view, "Later"));
        compare(fixture.answers, ["download", "dismiss"]);
    }
    function test_withoutNotesThereIsNoSpaceForThem() {
        const fixture = makeFixture();
        fixture.find("2.0", "");
        const view = show(fixture);
        compare(seen(view, item => item instanceof StudioTextArea).length, 0);
    }
    function test_notesAreReadOnlyAndScroll() {
        const fixture = makeFixture();
        fixture.find("2.0", "line\n".repeat(100));
        const view = show(fixture);
        const editor = seen(view, item => item.hasOwnProperty("selectedText") && item.readOnly)[0];
        const flickable = seen(view, item => item instanceof Flickable)[0];
        editor.forceActiveFocus();
        keyClick("x");
        compare(editor.text.indexOf("x"), -1);
        keyClick(Qt.Key_Down);
        verify(flickable.contentY > 0);
        keyClick(Qt.Key_Up);
        compare(flickable.contentY, 0);
    }
    function test_upToDate() {
        const fixture = makeFixture();
        fixture.findNothing();
        const view = show(fixture);
        verify(showsText(view, "Version 1.0 is the newest one."));
        compare(buttons(view).map(item => item.text), ["Close"]);
    }
    function test_failed() {
        const fixture = makeFixture();
        fixture.fail("The update is not signed.");
        const view = show(fixture);
        verify(showsText(view, "The update is not signed."));
        verify(view.Accessible.description.startsWith("The update is not signed. "));
        mouseClick(button(view, "Try Again"));
        compare(fixture.answers, ["retry"]);
    }
    function test_downloading() {
        const fixture = makeFixture();
        fixture.find("2.0", "");
        fixture.download(0.25);
        const view = show(fixture);
        const bar = seen(view, item => item instanceof StudioProgressBar)[0];
        compare(bar.value, 0.25);
        compare(bar.Accessible.name, "Progress of the download");
        verify(showsText(view, "25 %"));
        compare(buttons(view).map(item => item.text), ["Cancel"]);
    }
    function test_downloaded() {
        const fixture = makeFixture();
        fixture.find("2.0", "");
        fixture.finish(test.path);
        const view = show(fixture);
        compare(seen(view, item => item instanceof TextBox)[0].text, test.path);
        mouseClick(button(view, "Show in Folder"));
        compare(fixture.answers, [test.path]);
    }
    function test_escapeClosesInEveryPhase() {
        const fixture = makeFixture();
        const view = show(fixture);
        const phases = [() => fixture.check(), () => fixture.find("2.0", "new"), () => fixture.findNothing(),
            () => fixture.fail("No."), () => fixture.download(0.5), () => fixture.finish(test.path)];
        for (const phase of phases) {
            phase();
            keyClick(Qt.Key_Escape);
        }
        compare(fixture.answers, Array(phases.length).fill("dismiss"));
    }
    function test_returnContinues() {
        const fixture = makeFixture();
        fixture.find("2.0", "new");
        const view = show(fixture);
        keyClick(Qt.Key_Return);
        fixture.fail("No.");
        keyClick(Qt.Key_Enter);
        fixture.finish(test.path);
        keyClick(Qt.Key_Return);
        fixture.findNothing();
        keyClick(Qt.Key_Return);
        compare(fixture.answers, ["download", "retry", test.path, "dismiss"]);
    }
    function test_returnDoesNotCancelAnActivity() {
        const fixture = makeFixture();
        fixture.find("2.0", "new");
        const view = show(fixture);
        for (const phase of [() => fixture.check(), () => fixture.download(0.5)]) {
            phase();
            keyClick(Qt.Key_Return);
        }
        compare(fixture.answers, []);
    }
    function test_tabReachesEveryButton() {
        const fixture = makeFixture();
        fixture.find("2.0", "new");
        const view = show(fixture);
        const reached = new Set();
        for (let step = 0; step < 4; ++step) {
            keyClick(Qt.Key_Tab);
            for (const item of buttons(view).filter(item => item.activeFocus))
                reached.add(item.text);
        }
        compare(Array.from(reached).sort(), ["Download", "Later"]);
    }
    function test_romanian() {
        const fixture = makeFixture();
        fixture.find("2.0", "new");
        const view = show(fixture);
        fixture.speakRomanian();
        verify(showsText(view, "Tolmi 2.0 este disponibil"));
        compare(buttons(view).map(item => item.text), ["Mai tarziu", "Descarca"]);
    }
}

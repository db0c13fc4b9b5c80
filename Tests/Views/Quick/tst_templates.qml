import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Templates"
    when: windowShown
    width: 700
    height: 600
    visible: true

    property TemplatesFixture fixture
    property StudioTemplatesView view

    Component {
        id: fixtureComponent

        TemplatesFixture { }
    }
    Component {
        id: viewComponent

        StudioTemplatesView { anchors.fill: parent }
    }

    function init() {
        fixture = createTemporaryObject(fixtureComponent, test);
        view = createTemporaryObject(viewComponent, test, { model: fixture.model, texts: fixture.texts });
        waitForRendering(view);
    }
    function cleanup() {
        view.destroy();
    }
    function part(name) {
        return findChild(view, name);
    }
    /// Waits for the layout and clicks in the centre of an item.
    function press(name) {
        waitForRendering(view);
        mouseClick(part(name));
    }

    function test_startsEmpty() {
        verify(part("noTranscript").visible);
        verify(!part("input").visible);
        verify(!part("apply").enabled);
        verify(!part("copy").enabled);
        verify(part("applyHint").visible);
        verify(!part("output").visible);
        compare(part("preset").displayText, "Email Clear");
        compare(part("subtitle").text, "Clean text into a concise email");
        mouseClick(part("apply"));
        verify(!fixture.model.hasPreview);
    }
    function test_appliesAndCopies() {
        fixture.choose("ship it. now");
        verify(part("input").visible);
        compare(part("input").text, "ship it. now");
        verify(!part("noTranscript").visible);
        press("apply");
        verify(part("output").visible);
        verify(part("output").text.startsWith("Subject: Ship it. now\n"));
        verify(!part("applyHint").visible);
        compare(fixture.clipboard(), "");
        press("copy");
        compare(fixture.clipboard(), part("output").text);
    }
    function test_showsTheRawTextWithoutRefinement() {
        fixture.choose("", "as spoken");
        compare(part("input").text, "as spoken");
    }
    function test_choosesAPresetWithThePointer() {
        fixture.choose("ship it");
        const picker = part("preset");
        mouseClick(picker);
        tryVerify(() => picker.popup.opened);
        tryVerify(() => picker.popup.contentItem.itemAtIndex(2) !== null);
        mouseClick(picker.popup.contentItem.itemAtIndex(2));
        tryVerify(() => !picker.popup.visible);
        compare(fixture.model.selectedPresetID, "actionItems");
        compare(part("subtitle").text, "Extract checklist-style actions");
        press("apply");
        compare(part("output").text, "Action Items\n\n- [ ] ship it");
    }
    function test_anotherPresetLeavesThePreview() {
        fixture.choose("ship it");
        press("apply");
        const before = part("output").text;
        fixture.model.selectedPresetID = "customerReply";
        compare(part("preset").displayText, "Customer Reply");
        compare(part("output").text, before);
    }
    function test_byKeyboard() {
        fixture.choose("ship it");
        findChild(part("input"), "content").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        verify(part("preset").activeFocus);
        keyClick(Qt.Key_Down);
        compare(fixture.model.selectedPresetID, "meetingSummary");
        keyClick(Qt.Key_Tab);
        verify(part("apply").activeFocus);
        keyClick(Qt.Key_Space);
        verify(fixture.model.hasPreview);
        keyClick(Qt.Key_Tab);
        verify(part("copy").activeFocus);
        keyClick(Qt.Key_Return);
        verify(fixture.clipboard().startsWith("Meeting Summary"));
    }
    function test_followsTheLanguage() {
        fixture.choose("gata");
        press("apply");
        fixture.speak("ro");
        verify(!part("output").visible);
        compare(part("preset").displayText, "Email clar");
        compare(part("apply").text, "Aplica sablon");
        compare(part("subtitle").text, "Curata textul intr-un email concis");
        press("apply");
        verify(part("output").text.startsWith("Subiect: Gata\n"));
    }
    function test_deletedEntryLeavesThePreview() {
        fixture.choose("ship it");
        press("apply");
        fixture.deleteEverything();
        verify(part("noTranscript").visible);
        verify(!part("apply").enabled);
        verify(part("output").visible);
        verify(part("copy").enabled);
    }
    function test_blankTextHasAnEmptyPreview() {
        fixture.choose(" \n ");
        press("apply");
        verify(part("output").visible);
        compare(part("output").text, "");
        verify(part("copy").enabled);
        press("copy");
        compare(fixture.clipboard(), "");
    }
    function test_showsFiveLinesOfALongText() {
        fixture.choose("one two three four five six seven eight nine ten. ".repeat(40));
        const content = findChild(part("input"), "content");
        compare(content.lineCount, 5);
        verify(content.text.endsWith("\u2026"));
        // The displayed text can be selected.
        content.selectAll();
        compare(content.selectedText, content.text);
    }
    function test_scrollsToWhatHasTheFocus() {
        fixture.choose("one two three. ".repeat(400));
        press("apply");
        waitForRendering(view);
        verify(view.contentHeight > view.height);
        view.contentY = view.contentHeight - view.height;
        part("preset").forceActiveFocus(Qt.TabFocusReason);
        const y = part("preset").mapToItem(view, 0, 0).y;
        verify(y >= 0 && y < view.height);
    }
    function test_doesNotScrollWhenALongPreviewIsPressed() {
        fixture.choose("one two three. ".repeat(400));
        press("apply");
        waitForRendering(view);
        view.contentY = 300;
        const content = findChild(part("output"), "content");
        mouseClick(content, 20, 40);
        verify(content.activeFocus);
        compare(view.contentY, 300);
    }
    function test_isNamedForThoseWhoCannotSee() {
        compare(part("preset").Accessible.name, "Preset");
        compare(part("apply").Accessible.name, "Apply Template");
        compare(part("copy").Accessible.name, "Copy Output");
        compare(findChild(part("output"), "content").Accessible.name, "Preview");
    }
    function test_acceptsAMegabyte() {
        fixture.choose("This is a sentence of the long text. ".repeat(28000));
        verify(findChild(part("input"), "content").text.length < 5000);
        press("apply");
        verify(part("output").text.length > 1000000);
    }
}

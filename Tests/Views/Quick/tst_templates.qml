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

    property TemplatesStage stage
    property StudioTemplatesView view

    Component {
        id: stageComponent

        TemplatesStage { }
    }
    Component {
        id: viewComponent

        StudioTemplatesView { anchors.fill: parent }
    }

    function init() {
        stage = createTemporaryObject(stageComponent, test);
        view = createTemporaryObject(viewComponent, test, { model: stage.model, texts: stage.texts });
        waitForRendering(view);
    }
    function cleanup() {
        view.destroy();
    }
    function part(name) {
        return findChild(view, name);
    }
    /// Waits until everything has its place, and presses in the middle of a part.
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
        verify(!stage.model.hasPreview);
    }
    function test_appliesAndCopies() {
        stage.choose("ship it. now");
        verify(part("input").visible);
        compare(part("input").text, "ship it. now");
        verify(!part("noTranscript").visible);
        press("apply");
        verify(part("output").visible);
        verify(part("output").text.startsWith("Subject: Ship it. now\n"));
        verify(!part("applyHint").visible);
        compare(stage.clipboard(), "");
        press("copy");
        compare(stage.clipboard(), part("output").text);
    }
    function test_showsTheRawTextWhereNothingWasRefined() {
        stage.choose("", "as spoken");
        compare(part("input").text, "as spoken");
    }
    function test_choosesAPresetWithThePointer() {
        stage.choose("ship it");
        const picker = part("preset");
        mouseClick(picker);
        tryVerify(() => picker.popup.opened);
        tryVerify(() => picker.popup.contentItem.itemAtIndex(2) !== null);
        mouseClick(picker.popup.contentItem.itemAtIndex(2));
        tryVerify(() => !picker.popup.visible);
        compare(stage.model.selectedPresetID, "actionItems");
        compare(part("subtitle").text, "Extract checklist-style actions");
        press("apply");
        compare(part("output").text, "Action Items\n\n- [ ] ship it");
    }
    function test_anotherPresetLeavesThePreview() {
        stage.choose("ship it");
        press("apply");
        const before = part("output").text;
        stage.model.selectedPresetID = "customerReply";
        compare(part("preset").displayText, "Customer Reply");
        compare(part("output").text, before);
    }
    function test_byKeyboard() {
        stage.choose("ship it");
        findChild(part("input"), "content").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        verify(part("preset").activeFocus);
        keyClick(Qt.Key_Down);
        compare(stage.model.selectedPresetID, "meetingSummary");
        keyClick(Qt.Key_Tab);
        verify(part("apply").activeFocus);
        keyClick(Qt.Key_Space);
        verify(stage.model.hasPreview);
        keyClick(Qt.Key_Tab);
        verify(part("copy").activeFocus);
        keyClick(Qt.Key_Return);
        verify(stage.clipboard().startsWith("Meeting Summary"));
    }
    function test_followsTheLanguage() {
        stage.choose("gata");
        press("apply");
        stage.speak("ro");
        verify(!part("output").visible);
        compare(part("preset").displayText, "Email clar");
        compare(part("apply").text, "Aplica sablon");
        compare(part("subtitle").text, "Curata textul intr-un email concis");
        press("apply");
        verify(part("output").text.startsWith("Subiect: Gata\n"));
    }
    function test_deletedEntryLeavesThePreview() {
        stage.choose("ship it");
        press("apply");
        stage.deleteEverything();
        verify(part("noTranscript").visible);
        verify(!part("apply").enabled);
        verify(part("output").visible);
        verify(part("copy").enabled);
    }
    function test_aBlankTextMakesAnEmptyPreview() {
        stage.choose(" \n ");
        press("apply");
        verify(part("output").visible);
        compare(part("output").text, "");
        verify(part("copy").enabled);
        press("copy");
        compare(stage.clipboard(), "");
    }
    function test_showsFiveLinesOfALongText() {
        stage.choose("one two three four five six seven eight nine ten. ".repeat(40));
        const content = findChild(part("input"), "content");
        compare(content.lineCount, 5);
        verify(content.text.endsWith("\u2026"));
        // What is shown can be selected.
        content.selectAll();
        compare(content.selectedText, content.text);
    }
    function test_scrollsToWhatHasTheFocus() {
        stage.choose("one two three. ".repeat(400));
        press("apply");
        waitForRendering(view);
        verify(view.contentHeight > view.height);
        view.contentY = view.contentHeight - view.height;
        part("preset").forceActiveFocus(Qt.TabFocusReason);
        const y = part("preset").mapToItem(view, 0, 0).y;
        verify(y >= 0 && y < view.height);
    }
    function test_staysWhereALongPreviewIsPressed() {
        stage.choose("one two three. ".repeat(400));
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
    function test_takesAMegabyte() {
        stage.choose("This is a sentence of the long text. ".repeat(28000));
        verify(findChild(part("input"), "content").text.length < 5000);
        press("apply");
        verify(part("output").text.length > 1000000);
    }
}

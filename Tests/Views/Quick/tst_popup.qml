import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Popup"
    when: windowShown
    width: 420
    height: 720
    visible: true

    Component {
        id: fixtures

        PopupFixture { }
    }
    Component {
        id: views

        MenuBarPopupView { }
    }
    SignalSpy {
        id: closing

        signalName: "closeRequested"
    }

    property MenuBarPopupView view: null

    /// Before the view's model is destroyed.
    function cleanup() {
        view.destroy();
        wait(0);
    }
    function findChildren(item, matches) {
        let found = matches(item) ? [item] : [];
        for (let index = 0; index < item.children.length; ++index)
            found = found.concat(findChildren(item.children[index], matches));
        return found;
    }
    /// A popup over a flow that is set up.
    function open(isTrusted = true): var {
        const fixture = createTemporaryObject(fixtures, test);
        fixture.start(isTrusted);
        view = views.createObject(test, { model: fixture.model, texts: fixture.texts });
        closing.target = view;
        closing.clear();
        view.forceActiveFocus();
        return { fixture: fixture, view: view, child: name => findChild(view, name) };
    }

    function test_isAsWideAsThePanel() {
        compare(open().view.width, 320);
    }
    function test_sectionsKeepTheirContentAwayFromTheirEdges() {
        const popup = open();
        popup.fixture.setUpdatesPossible();
        const sections = findChildren(popup.view, item => item instanceof Divider);
        compare(sections.length, 4);
        const tops = [0].concat(sections.map(item => item.y + item.height));
        const bottoms = sections.map(item => item.y).concat([popup.view.height]);
        const controls = findChildren(popup.view, item => item instanceof PopupControlRow);
        const ofSections = [[popup.child("profile"), popup.child("stateBadge")],
                            [popup.child("hotkeyReminder"), popup.child("hotkeyReminder")],
                            [controls[0], controls[2]],
                            [popup.child("openStudio"), popup.child("checkForUpdates")],
                            [popup.child("quit"), popup.child("quit")]];
        for (const [index, [first, last]] of ofSections.entries()) {
            compare(first.mapToItem(popup.view, 0, 0).y - tops[index], 14, first);
            compare(bottoms[index] - last.mapToItem(popup.view, 0, last.height).y, 14, last);
        }
        for (const name of ["openStudio", "settings", "checkForUpdates", "quit"]) {
            compare(popup.child(name).mapToItem(popup.view, 0, 0).x, 14);
            compare(popup.child(name).width, 292);
        }
    }
    function test_aLongNameLeavesTheChipNarrow() {
        const popup = open();
        popup.fixture.setName("Maria Alexandra Konstantinopolska");
        const chip = popup.child("profile");
        compare(chip.width, 90);
        popup.fixture.setName("Ana");
        verify(chip.width < 90);
    }
    /// How far an item of the popup stays away from its two sides.
    function marginsOf(popup: var, name: string): var {
        const item = popup.child(name);
        const left = item.mapToItem(popup.view, 0, 0).x;
        return [left, popup.view.width - left - item.width];
    }
    function test_sectionsKeepTheirPaddingAndControlsTheirWidth() {
        const popup = open();
        popup.fixture.dictate("Move the review to Thursday.");
        compare(marginsOf(popup, "lastTranscript"), [14, 14]);
        compare(marginsOf(popup, "hotkeyReminder")[0], 14);
        compare(marginsOf(popup, "profile")[1], 14);
        compare(marginsOf(popup, "stateBadge")[1], 14);
        for (const picker of ["uiLanguage", "transcriptionLanguage"]) {
            compare(popup.child(picker).width, 110);
            compare(marginsOf(popup, picker)[1], 14);
        }
        compare(marginsOf(popup, "refinement")[1], 14);
    }
    function test_tellsHowToDictate() {
        const popup = open();
        verify(popup.child("hotkeyReminder").visible);
        verify(!popup.child("accessibilityWarning").visible);
    }
    function test_withoutTheRightItWarnsInstead() {
        const popup = open(false);
        verify(!popup.child("hotkeyReminder").visible);
        verify(popup.child("accessibilityWarning").visible);
        mouseClick(popup.child("grant"));
        compare(popup.fixture.promptCount(), 1);
    }
    function test_transcriptShowsAfterTheFirstDictation() {
        const popup = open();
        const height = popup.view.height;
        verify(!popup.child("lastTranscript").visible);
        popup.fixture.dictate("Move the review to Thursday.");
        verify(popup.child("lastTranscript").visible);
        tryVerify(() => popup.view.height > height);
        mouseClick(popup.child("copy"));
        compare(popup.fixture.copiedText(), "Move the review to Thursday.");
        compare(closing.count, 0);
    }
    function test_longTranscriptsEndAfterFourLines() {
        const popup = open();
        popup.fixture.dictate("one two three four five six seven ".repeat(5));
        tryVerify(() => popup.view.height > 500);
        const height = popup.view.height;
        popup.fixture.dictate("one two three four five six seven ".repeat(40));
        wait(0);
        compare(popup.view.height, height);
    }
    function test_theTranscriptStandsOnAtMostFourLines() {
        const popup = open();
        const content = findChild(popup.child("lastTranscript"), "content");
        let words = "";
        for (let lines = 1; lines <= 4; ++lines) {
            do {
                words += "word ";
                popup.fixture.dictate(words);
                compare(content.text, words);
            } while (content.lineCount < lines);
            compare(content.lineCount, lines);
        }
        const longer = "word ".repeat(200);
        popup.fixture.dictate(longer);
        compare(content.lineCount, 4);
        verify(content.text.endsWith("\u2026"));
        verify(longer.startsWith(content.text.slice(0, -1)));
        verify(content.height <= popup.child("lastTranscript").height);
    }
    function test_badgeFollowsTheState() {
        const popup = open();
        const badge = popup.child("stateBadge");
        compare(badge.text, "Ready");
        compare(badge.dotColor, TolmiPalette.frost);
        popup.fixture.record();
        compare(badge.text, "Recording");
        compare(badge.dotColor, Qt.rgba(1, 1, 1, 1));
        verify(!badge.isBusy);
        popup.fixture.transcribe();
        compare(badge.dotColor, TolmiPalette.cloud);
        verify(badge.isBusy);
    }
    function test_anotherLanguageRenamesEverything() {
        const popup = open();
        const language = popup.child("uiLanguage");
        const transcription = popup.child("transcriptionLanguage");
        popup.fixture.setLanguage("pt");
        compare(language.displayText, "English");
        compare(transcription.displayText, "Portuguese");
        language.picked("ro");
        compare(language.displayText, "Romana");
        compare(transcription.displayText, "Portugheza");
        compare(transcription.options[2].text, popup.fixture.model.transcriptionLanguageOptions[2].text);
        compare(popup.child("quit").text, "Inchide Tolmi");
        compare(popup.child("stateBadge").text, "Gata");
        compare(transcription.label, "Limba transcriere");
    }
    function test_unknownTranscriptionLanguageLeavesThePickerEmpty() {
        const popup = open();
        const picker = popup.child("transcriptionLanguage");
        popup.fixture.setLanguage("hu");
        compare(picker.currentIndex, -1);
        compare(picker.displayText, "");
        popup.child("uiLanguage").picked("ro");
        compare(picker.currentIndex, -1);
        compare(popup.fixture.language(), "hu");
    }
    function test_aPickedLanguageIsStored() {
        const popup = open();
        const picker = popup.child("transcriptionLanguage");
        picker.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        tryVerify(() => picker.popup.opened);
        const list = picker.popup.contentItem;
        tryVerify(() => list.itemAtIndex(4) !== null);
        mouseClick(list.itemAtIndex(4));
        compare(popup.fixture.language(), "fr");
        compare(picker.displayText, "French");
        compare(closing.count, 0);
    }
    function test_escapeInAListClosesTheListOnly() {
        const popup = open();
        const picker = popup.child("uiLanguage");
        picker.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        tryVerify(() => picker.popup.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !picker.popup.visible);
        compare(closing.count, 0);
        keyClick(Qt.Key_Escape);
        compare(closing.count, 1);
    }
    function test_switchStoresAndFollows() {
        const popup = open();
        const control = popup.child("refinement");
        verify(!control.checked);
        mouseClick(control);
        verify(popup.fixture.refinementEnabled());
        verify(control.checked);
        popup.fixture.setRefinementEnabled(false);
        verify(!control.checked);
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        verify(popup.fixture.refinementEnabled());
    }
    function test_waysOutCloseThePopup_data() {
        return [{ tag: "profile", way: "profile" }, { tag: "openStudio", way: "command center" },
                { tag: "settings", way: "settings" }, { tag: "checkForUpdates", way: "updates" }];
    }
    function test_waysOutCloseThePopup(data) {
        const popup = open();
        popup.fixture.setUpdatesPossible();
        mouseClick(popup.child(data.tag));
        compare(popup.fixture.ways, [data.way]);
        compare(closing.count, 1);
    }
    function test_quits() {
        const popup = open();
        mouseClick(popup.child("quit"));
        compare(popup.fixture.ways, ["quit"]);
    }
    function test_updatesWaitUntilTheyCanBeChecked() {
        const popup = open();
        const row = popup.child("checkForUpdates");
        verify(!row.enabled);
        mouseClick(row);
        compare(popup.fixture.ways, []);
        popup.fixture.setUpdatesPossible();
        verify(row.enabled);
    }
    function test_tabWalksFromTopToBottom() {
        const popup = open();
        popup.fixture.setUpdatesPossible();
        popup.fixture.dictate("Hello.");
        for (const next of ["profile", "copy", "content", "uiLanguage", "transcriptionLanguage", "refinement",
                            "openStudio", "settings", "checkForUpdates", "quit", "profile"]) {
            keyClick(Qt.Key_Tab);
            verify(popup.child(next).activeFocus, next);
        }
    }
    function test_namesForThoseWhoCannotSee() {
        const popup = open();
        compare(popup.view.Accessible.role, Accessible.Dialog);
        compare(popup.view.Accessible.name, "Tolmi Flow");
        for (const name of ["profile", "uiLanguage", "transcriptionLanguage", "refinement", "openStudio", "settings",
                            "checkForUpdates", "quit", "stateBadge"])
            verify(popup.child(name).Accessible.name !== "", name);
        compare(popup.child("settings").Accessible.description, "Ctrl+,");
    }
}

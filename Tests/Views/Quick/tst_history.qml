import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    readonly property var entries: [
        { raw: "meeting moves to ten", refined: "The meeting moves to ten.", minutesAgo: 0, app: "Writer",
          bundleID: "org.writer", audio: "one.wav" },
        { raw: "nota", refined: "Notă pentru mine.", minutesAgo: 5, language: "ro" },
        { raw: "release notes", refined: "Release notes.", minutesAgo: 90, isPinned: true }
    ]
    property HistoryWorkspaceView view
    property Item list

    name: "History"
    when: windowShown
    width: 1140
    height: 740
    visible: true

    HistoryFixture {
        id: user
    }
    KeyHolder {
        id: keyboard
    }
    Component {
        id: workspace

        HistoryWorkspaceView {
            width: test.width
            height: test.height
            model: user.model
            texts: user.texts
        }
    }

    function open(entries) {
        user.open(entries);
        view = createTemporaryObject(workspace, test);
        list = findChild(view, "historyList");
        list.takeKeyboard(Qt.OtherFocusReason);
        waitForRendering(view);
    }
    function cleanup() {
        view = null;
        list = null;
    }
    /// The rows from top to bottom, by their titles.
    function titles() {
        return rows().map(row => row.title);
    }
    function rows() {
        const inside = findChild(view, "list");
        // The view would lay out its rows only in the next frame.
        inside.forceLayout();
        return Array.from({ length: inside.count }, (_, index) => inside.itemAtIndex(index)).filter(row => row);
    }
    /// What a screen reader finds in the list, including rows in the reuse pool.
    function foundRows() {
        const inside = findChild(view, "list");
        return Array.from(inside.contentItem.children).filter(item => item.visible && item.entryID !== undefined);
    }
    /// Presses a row and waits until the detail of its entry is laid out.
    function focusRow(index) {
        mouseClick(rows()[index]);
        waitForRendering(view);
    }
    function press(objectName, within) {
        const control = findChild(within ?? view, objectName);
        verify(control, objectName);
        mouseClick(control);
    }
    function type(text) {
        for (const letter of text)
            keyClick(letter);
    }
    function shownText(objectName) {
        const item = findChild(view, objectName);
        return item && item.visible ? item.text : "";
    }

    function test_anEmptyHistorySaysHowToDictate() {
        open([]);
        compare(shownText("emptyTitle"), "No transcriptions yet");
        compare(shownText("emptyHint"), "Use Right Alt (AltGr) to dictate.");
        compare(shownText("selectToInspect"), "Select a transcription to inspect details.");
        for (const name of ["exportSelected", "exportAll", "deleteSelected", "clearAll"])
            verify(!findChild(view, name).enabled, name);
    }
    function test_entriesStandInTheirOrder() {
        open(entries);
        compare(titles(), ["Release notes.", "The meeting moves to ten.", "Notă pentru mine."]);
        const [pinned, first, second] = rows();
        compare([pinned.relativeDate, first.relativeDate, second.relativeDate], ["1 hr. ago", "now", "5 min. ago"]);
        verify(findChild(first, "audioMark").visible);
        verify(!findChild(second, "audioMark").visible);
        // Each section's first row is preceded by a header.
        verify(first.y - pinned.y > pinned.height + 20);
        compare(second.y - first.y, 90);
        compare(first.height, 86);
    }
    function test_searchNarrowsAndFindsNothing() {
        open(entries);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        verify(findChild(view, "search").activeFocus);
        type("note");
        compare(titles(), ["Release notes."]);
        type("q");
        compare(shownText("emptyTitle"), "No results");
        compare(shownText("emptyHint"), "Try another search query.");
        keyClick(Qt.Key_Escape);
        compare(titles().length, 3);
        keyClick(Qt.Key_Down);
        verify(list.activeFocus);
    }
    function test_rowsThatWaitForAnotherEntryAreHidden() {
        open(entries);
        compare(foundRows().length, 3);
        findChild(view, "search").forceActiveFocus();
        type("note");
        compare(titles(), ["Release notes."]);
        tryVerify(() => foundRows().length === 1);
        keyClick(Qt.Key_Escape);
        compare(titles().length, 3);
        tryVerify(() => foundRows().length === 3);
    }
    function test_aRowThatIsPressedIsShown() {
        open(entries);
        focusRow(1);
        compare(user.model.detail.refinedText, "The meeting moves to ten.");
        compare(shownText("date"), "Jan 1, 2026, 00:00:00");
        compare(shownText("language"), "Language: EN");
        compare(findChild(view, "raw").text, "meeting moves to ten");
        compare(shownText("audioFile"), "File: one.wav");
        compare(user.model.detail.pasteFacts[0], "Pasted to: Writer");
    }
    function test_arrowsMoveTheFocus() {
        open(entries);
        keyClick(Qt.Key_Down);
        compare(user.model.focusedRow, 1);
        verify(rows()[1].isFocused);
        keyClick(Qt.Key_End);
        compare(user.model.focusedRow, 2);
        keyClick(Qt.Key_Up);
        keyClick(Qt.Key_Home);
        compare(user.model.focusedRow, 0);
    }
    function test_spaceTicks() {
        open(entries);
        keyClick(Qt.Key_Space);
        compare(user.model.selectedText, "1 selected");
        verify(findChild(rows()[0], "tick").checked);
        verify(findChild(view, "deleteSelected").enabled);
        keyClick(Qt.Key_Space);
        compare(user.model.selectedText, "0 selected");
        verify(!findChild(rows()[0], "tick").checked);
    }
    function test_checkBoxTicksWithoutMovingTheFocus() {
        open(entries);
        press("tick", rows()[2]);
        compare(user.model.selectedText, "1 selected");
        compare(user.model.focusedRow, 0);
        press("deleteSelected");
        compare(titles(), ["Release notes.", "The meeting moves to ten."]);
    }
    function test_ticksStayWithTheirRowsAfterAPress() {
        open(entries);
        press("tick", rows()[2]);
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Space);
        verify(!findChild(rows()[2], "tick").checked);
    }
    function test_deleteKeyDeletesTheFocusedEntry() {
        open(entries);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Delete);
        compare(titles(), ["Release notes.", "Notă pentru mine."]);
    }
    function test_movingTheFocusLeavesTheButtonsOfTheRow_data() {
        return [{ tag: "down", key: Qt.Key_Down }, { tag: "up", key: Qt.Key_Up }, { tag: "home", key: Qt.Key_Home },
                { tag: "end", key: Qt.Key_End }, { tag: "page up", key: Qt.Key_PageUp },
                { tag: "page down", key: Qt.Key_PageDown }];
    }
    function test_movingTheFocusLeavesTheButtonsOfTheRow(data) {
        open(entries);
        keyClick(Qt.Key_Down);
        for (let presses = 0; presses < 3; ++presses)
            keyClick(Qt.Key_Tab);
        verify(findChild(rows()[1], "delete").activeFocus);
        keyClick(data.key);
        verify(!findChild(rows()[1], "delete").activeFocus);
        keyClick(Qt.Key_Return);
        compare(titles().length, 3);
        keyClick(Qt.Key_Home);
        compare(user.model.focusedRow, 0);
    }
    function test_theListHasTheKeyboardAfterAPressOfItsButtons() {
        open(entries);
        for (let presses = 0; presses < 3; ++presses)
            keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Return);
        compare(titles().length, 2);
        keyClick(Qt.Key_Return);
        compare(titles().length, 2);
        keyClick(Qt.Key_Down);
        compare(user.model.focusedRow, 1);
    }
    function test_aHeldDeleteKeyDeletesOneEntry() {
        open(entries);
        keyboard.hold(view, Qt.Key_Delete, 20);
        compare(titles(), ["The meeting moves to ten.", "Notă pentru mine."]);
    }
    function test_aHeldSpaceTicksOnce() {
        open(entries);
        keyboard.hold(view, Qt.Key_Space, 5);
        compare(user.model.selectedText, "1 selected");
    }
    function test_theNeighbourOfADeletedEntryIsFocusedAndInSight() {
        user.openMany(200);
        view = createTemporaryObject(workspace, test);
        list = findChild(view, "historyList");
        list.takeKeyboard(Qt.OtherFocusReason);
        waitForRendering(view);
        const inside = findChild(view, "list");
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Up);
        for (const expected of ["Entry 199", "Entry 197", "Entry 196"]) {
            keyClick(Qt.Key_Delete);
            const row = rows().find(row => row.isFocused);
            compare(row?.title, expected);
            const top = row.mapToItem(inside, 0, 0).y;
            verify(top >= 0 && top + row.height <= inside.height, expected);
        }
    }
    function test_aDeletionIsUndone() {
        open(entries);
        const bar = findChild(view, "undoBar");
        verify(!bar.visible);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Delete);
        verify(bar.visible);
        compare(shownText("undoText"), "Deleted: 1");
        compare(bar.Accessible.name, "Deleted: 1");
        press("undo");
        compare(titles(), ["Release notes.", "The meeting moves to ten.", "Notă pentru mine."]);
        compare(user.model.focusedRow, 1);
        verify(!bar.visible);
        // The keyboard is back in the list.
        keyClick(Qt.Key_Delete);
        compare(titles().length, 2);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(titles().length, 3);
    }
    function test_undoIsReachedByTab() {
        open([entries[0]]);
        keyClick(Qt.Key_Delete);
        compare(titles(), []);
        keyClick(Qt.Key_Tab);
        verify(findChild(view, "undo").activeFocus);
        keyClick(Qt.Key_Return);
        compare(titles(), ["The meeting moves to ten."]);
        verify(!findChild(view, "undoBar").visible);
        keyClick(Qt.Key_Space);
        compare(user.model.selectedText, "1 selected");
    }
    function test_undoLeavesTheKeyboardInTheListWhenItGoes() {
        open(entries);
        keyClick(Qt.Key_Delete);
        findChild(view, "undo").forceActiveFocus(Qt.TabFocusReason);
        user.pass(10);
        verify(!findChild(view, "undoBar").visible);
        keyClick(Qt.Key_End);
        compare(user.model.focusedRow, 1);
    }
    function test_undoTakesTheKeyboardFromNobodyElseWhenItGoes() {
        open(entries);
        keyClick(Qt.Key_Delete);
        findChild(view, "undo").forceActiveFocus(Qt.TabFocusReason);
        findChild(view, "search").forceActiveFocus(Qt.MouseFocusReason);
        user.pass(10);
        verify(!findChild(view, "undoBar").visible);
        verify(findChild(view, "search").activeFocus);
    }
    function test_aDeletionByAButtonIsFinal() {
        open(entries);
        press("delete", rows()[2]);
        verify(!findChild(view, "undoBar").visible);
        press("tick", rows()[0]);
        press("deleteSelected");
        verify(!findChild(view, "undoBar").visible);
    }
    function test_copyingAnEntryWithoutRefinedTextTakesTheRawOne() {
        open([{ raw: "only raw", refined: "" }]);
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(user.clipboard(), "only raw");
    }
    function test_deleteButton() {
        open(entries);
        press("delete", rows()[2]);
        compare(titles(), ["Release notes.", "The meeting moves to ten."]);
    }
    function test_pinButtonMovesTheEntry() {
        open(entries);
        press("pin", rows()[2]);
        compare(titles(), ["Notă pentru mine.", "Release notes.", "The meeting moves to ten."]);
        compare(findChild(rows()[0], "pin").symbol, "pin.fill");
        compare(findChild(rows()[0], "pin").Accessible.name, "Unpin");
        compare(findChild(rows()[2], "pin").Accessible.name, "Pin");
    }
    function test_copies() {
        open(entries);
        focusRow(1);
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(user.clipboard(), "The meeting moves to ten.");
        press("copy", findChild(view, "raw"));
        compare(user.clipboard(), "meeting moves to ten");
        press("copy", findChild(view, "refined"));
        compare(user.clipboard(), "The meeting moves to ten.");
        compare(findChild(findChild(view, "raw"), "copy").text, "Copy Raw");
    }
    function test_exports() {
        open(entries);
        press("exportAll");
        verify(user.proposedNames()[0].startsWith("tolmi-history-all-2026-01-01-"));
        verify(user.chooseFile("/all.txt"));
        verify(user.writtenText().startsWith("=== Entry 1 ===\n"));
        verify(user.writtenText().includes("=== Entry 3 ===\n"));
        press("tick", rows()[0]);
        press("exportSelected");
        verify(user.chooseFile("/selected.txt"));
        verify(!user.writtenText().includes("=== Entry 2 ===\n"));
    }
    function test_aFailedExportIsTold() {
        open(entries);
        user.setUnwritable();
        press("exportAll");
        verify(user.chooseFile("/forbidden.txt"));
        const dialog = findChild(view, "exportErrorDialog");
        tryVerify(() => dialog.opened);
        compare(dialog.title, "Export failed");
        compare(dialog.message, "Permission denied: /forbidden.txt");
        keyClick(Qt.Key_Return);
        tryVerify(() => !dialog.visible);
        verify(!user.model.showingExportError);
    }
    function test_clearAllAsks() {
        open(entries);
        const dialog = findChild(view, "clearAllDialog");
        press("clearAll");
        tryVerify(() => dialog.opened);
        compare(dialog.title, "Clear all transcription history?");
        keyClick(Qt.Key_Escape);
        tryVerify(() => !dialog.visible);
        compare(titles().length, 3);
        press("clearAll");
        tryVerify(() => dialog.opened);
        dialog.accept();
        tryVerify(() => !dialog.visible);
        compare(shownText("emptyTitle"), "No transcriptions yet");
        verify(!user.model.showingClearAllConfirmation);
    }
    function test_eachButtonOfTheQuestionDoesWhatItSays_data() {
        const click = title => mouseClick(titledButton(title));
        return [{ tag: "cancelled by the mouse", act: () => click("Cancel"), left: 3 },
                { tag: "confirmed by the mouse", act: () => click("Clear All"), left: 0 },
                { tag: "cancelled by Return", act: () => keyClick(Qt.Key_Return), left: 3 },
                { tag: "cancelled by the space bar", act: () => keyClick(Qt.Key_Space), left: 3 },
                { tag: "confirmed by Tab and Return", act: () => confirmBy(Qt.Key_Return), left: 0 },
                { tag: "confirmed by Tab and the space bar", act: () => confirmBy(Qt.Key_Space), left: 0 }];
    }
    function test_eachButtonOfTheQuestionDoesWhatItSays(data) {
        open(entries);
        const dialog = findChild(view, "clearAllDialog");
        press("clearAll");
        tryVerify(() => dialog.opened);
        data.act();
        tryVerify(() => !dialog.visible);
        compare(titles().length, data.left);
        verify(!user.model.showingClearAllConfirmation);
    }
    function confirmBy(key) {
        keyClick(Qt.Key_Tab);
        keyClick(key);
    }
    /// The button of the question with this title.
    function titledButton(title) {
        const below = item => Array.from(item.children).reduce((found, child) => [...found, child, ...below(child)], []);
        const found = below(findChild(view, "clearAllDialog").contentItem)
            .filter(item => item instanceof StudioButton && item.visible && item.text === title);
        compare(found.length, 1, title);
        return found[0];
    }
    function test_theListHasItsWidthAndItsBounds() {
        open(entries);
        compare(list.width, 420);
        const dragBy = distance => {
            const handle = list.mapToItem(view, list.width + Metrics.cardGap / 2, 300);
            mouseDrag(view, handle.x, handle.y, distance, 0);
        };
        dragBy(-30);
        compare(list.width, 390);
        dragBy(-200);
        compare(list.width, 360);
        dragBy(400);
        compare(list.width, 560);
    }
    function test_aRecordingIsPlayedPausedAndFound() {
        open(entries);
        focusRow(1);
        compare(shownText("play"), "Play");
        press("play");
        compare(shownText("play"), "Pause");
        press("play");
        compare(shownText("play"), "Play");
        press("reveal");
        compare(user.playerCalls().map(call => call.split(" ")[0]), ["open", "prepare", "play", "pause"]);
        verify(user.revealed()[0].endsWith("audio-cache/one.wav"));
    }
    function test_aRecordingThatHasGoneOrNeverWas() {
        open(entries);
        user.setVanished("one.wav");
        focusRow(1);
        compare(shownText("audioMessage"), "Audio file is no longer available (it may have been cleaned by retention).");
        compare(shownText("play"), "");
        press("reveal");
        verify(user.revealed()[0].startsWith("openFolder "));
        focusRow(2);
        compare(shownText("audioMessage"), "No audio recording is available for this entry.");
        compare(shownText("audioFile"), "");
        compare(shownText("reveal"), "");
    }
    function test_aRecordingThatCannotBePlayedIsTold() {
        open(entries);
        user.setUnplayable();
        focusRow(1);
        press("play");
        const dialog = findChild(view, "audioErrorDialog");
        tryVerify(() => dialog.opened);
        compare(dialog.title, "Audio playback failed");
        compare(dialog.message, "Please try again or show the file in its folder.");
        dialog.accept();
        tryVerify(() => !dialog.visible);
        verify(!user.model.showingAudioError);
    }
    function test_everythingFollowsTheLanguage() {
        open(entries);
        user.setRomanian();
        compare(findChild(view, "exportAll").text, "Exporta tot");
        compare(findChild(findChild(view, "refined"), "copy").text, "Copiaza Rafinat");
        compare(shownText("language"), "Limba: EN");
        compare(rows()[1].relativeDate, "acum");
        keyClick(Qt.Key_Delete);
        compare(shownText("undoText"), "Sterse: 1");
        compare(findChild(view, "undo").text, "Anuleaza");
    }
    function test_emptyLargeAndForeignTextsAreShown() {
        open([{ raw: "", refined: "" }, { raw: "only raw", refined: "", minutesAgo: 1 },
              { raw: "שלום עולם", minutesAgo: 2 }, { raw: "e\u0301\u0323 s\u0326", minutesAgo: 3 },
              { raw: "word ".repeat(20000), minutesAgo: 4 }]);
        compare(titles().slice(0, 4), ["(empty transcript)", "only raw", "שלום עולם", "e\u0301\u0323 s\u0326"]);
        for (let step = 0; step < 4; ++step)
            keyClick(Qt.Key_Down);
        // Not all of it is laid out, but all is copied.
        const raw = findChild(view, "raw");
        compare(findChild(raw, "transcript").text.length, raw.longestShownText + 1);
        press("copy", raw);
        compare(user.clipboard().length, 100000);
    }
    function test_theDetailIsScrolledByKeys() {
        open([{ raw: "word ".repeat(3000), refined: "Word. ".repeat(3000) }]);
        const page = findChild(view, "detailPage");
        const end = page.contentHeight - page.height;
        verify(end > 1000);
        findChild(findChild(view, "raw"), "copy").forceActiveFocus(Qt.TabFocusReason);
        compare(page.contentY, 0);
        keyClick(Qt.Key_Down);
        compare(page.contentY, 48);
        keyClick(Qt.Key_Up);
        keyClick(Qt.Key_Up);
        compare(page.contentY, 0);
        keyClick(Qt.Key_PageDown);
        compare(page.contentY, page.height - 48);
        keyClick(Qt.Key_End);
        compare(page.contentY, end);
        keyClick(Qt.Key_PageUp);
        verify(page.contentY < end);
        keyClick(Qt.Key_Home);
        compare(page.contentY, 0);
        // The text itself, where one selects, scrolls as well.
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Down);
        compare(page.contentY, 48);
        keyClick(Qt.Key_Tab);
        const copy = findChild(findChild(view, "refined"), "copy");
        verify(copy.activeFocus);
        const top = copy.mapToItem(page, 0, 0).y;
        verify(top >= 0 && top + copy.height <= page.height);
        compare(user.model.focusedRow, 0);
    }
    function test_aLongListMakesFewRows() {
        user.openMany(5000);
        view = createTemporaryObject(workspace, test);
        list = findChild(view, "historyList");
        list.takeKeyboard(Qt.OtherFocusReason);
        waitForRendering(view);
        verify(rows().length < 20);
        keyClick(Qt.Key_End);
        waitForRendering(view);
        compare(titles().pop(), "Entry 4999");
        verify(rows().length < 20);
        keyClick(Qt.Key_PageUp);
        verify(user.model.focusedRow < 4999);
    }
}

import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Settings"
    when: windowShown
    width: 760
    height: 640
    visible: true

    Component {
        id: fixtures

        SettingsFixture { }
    }
    Component {
        id: views

        SettingsView { }
    }

    property SettingsView view: null

    /// Before the view's model is destroyed.
    function cleanup() {
        view.destroy();
        wait(0);
    }
    /// The workspace with one of its tabs selected.
    function open(tab = 0, isConfigured = true): var {
        const fixture = createTemporaryObject(fixtures, test);
        fixture.start(isConfigured);
        view = views.createObject(test, { model: fixture.model, texts: fixture.texts });
        findChild(view, "tabs").currentIndex = tab;
        waitForRendering(view);
        return { fixture: fixture, store: fixture.store, view: view, child: name => findChild(view, name) };
    }
    function fieldOf(row: Item): Item {
        return findChild(row, "field");
    }
    function retype(field: Item, text: string) {
        field.forceActiveFocus();
        field.selectAll();
        for (const letter of text)
            keyClick(letter);
    }

    function test_tabsInTheirOrder() {
        const settings = open();
        const tabs = settings.child("tabs");
        compare(tabs.count, 3);
        compare([0, 1, 2].map(index => tabs.itemAt(index).text), ["General", "Engine", "Refinement"]);
        compare([0, 1, 2].map(index => tabs.itemAt(index).symbol), ["gear", "cpu", "sparkles"]);
        compare(tabs.currentIndex, 0);
    }
    function test_clickChangesTheTab() {
        const settings = open();
        verify(settings.child("appearance"));
        mouseClick(settings.child("engineTab"));
        verify(settings.child("binaryPath"));
        mouseClick(settings.child("refinementTab"));
        verify(settings.child("endpoint"));
        mouseClick(settings.child("generalTab"));
        verify(settings.child("appearance"));
    }
    function test_tabStartsAtItsTop() {
        const settings = open();
        settings.child("page").contentY = 40;
        settings.child("tabs").currentIndex = 1;
        compare(settings.child("page").contentY, 0);
    }
    function test_pickers_data() {
        return [
            { tag: "appearance", tab: 0, property: "", model: "appearance", value: "light" },
            { tag: "uiLanguage", tab: 0, property: "", model: "uiLanguage", value: "ro" },
            { tag: "transcriptionLanguage", tab: 0, property: "language", model: "", value: "de" },
            { tag: "performanceMode", tab: 1, property: "", model: "performanceMode", value: "maxQuality" },
            { tag: "transitionSound", tab: 1, property: "", model: "transitionSound", value: "sosumi" }
        ];
    }
    function test_pickers(row) {
        const settings = open(row.tab);
        const picker = settings.child(row.tag);
        const index = picker.options.findIndex(option => option.value === row.value);
        picker.forceActiveFocus();
        // Like a choice from the open list.
        picker.currentIndex = index;
        picker.activated(index);
        compare(row.model === "" ? settings.store[row.property] : settings.fixture.model[row.model], row.value);
        compare(picker.currentIndex, index);
    }
    function test_textsFollowTheLanguage() {
        const settings = open();
        compare(settings.child("generalTab").text, "General");
        compare(settings.child("appearance").displayText, "Dark");
        settings.fixture.model.uiLanguage = "ro";
        compare(settings.child("appearance").displayText, "Intunecat");
        compare(settings.child("openProfile").text, "Deschide Profil");
    }
    function test_navigatesToTheProfile() {
        const settings = open();
        mouseClick(settings.child("openProfile"));
        compare(settings.fixture.navigationCount(), 1);
    }
    function test_hotkeyIsOnlyShown() {
        compare(open().child("hotkey").text, "Right Alt (AltGr)");
    }
    function test_updates() {
        const settings = open();
        const button = settings.child("checkForUpdates");
        const automatic = settings.child("automaticUpdates");
        verify(automatic.enabled);
        verify(automatic.checked);
        verify(button.enabled);
        verify(!settings.child("updatesHint").visible);
        settings.child("page").contentY = 1000;
        button.clicked();
        compare(settings.fixture.updateCheckCount(), 1);
        automatic.press();
        verify(!settings.fixture.model.appUpdater.automaticallyChecksForUpdates);
        settings.fixture.setCanCheckForUpdates(false);
        verify(!button.enabled);
    }
    function test_withoutAnUpdater() {
        const settings = open(0, false);
        verify(!settings.child("automaticUpdates").enabled);
        verify(!settings.child("automaticUpdates").checked);
        verify(!settings.child("checkForUpdates").enabled);
        verify(settings.child("updatesHint").visible);
    }
    function test_textRows_data() {
        return [
            { tag: "binaryPath", tab: 1, property: "whisperBinaryPath", text: "no such/path" },
            { tag: "modelPath", tab: 1, property: "modelPath", text: "x" },
            { tag: "endpoint", tab: 2, property: "ollamaEndpoint", text: "not an address" },
            { tag: "model", tab: 2, property: "ollamaModel", text: "tiny" }
        ];
    }
    function test_textRows(row) {
        const settings = open(row.tab);
        const field = fieldOf(settings.child(row.tag));
        compare(field.text, settings.store[row.property]);
        retype(field, row.text);
        compare(settings.store[row.property], row.text);
    }
    function test_timeout() {
        const settings = open(2);
        const field = fieldOf(settings.child("timeout"));
        compare(field.text, "10");
        retype(field, "12.5");
        compare(settings.store.ollamaTimeout, 12.5);
        retype(field, "12.5x");
        compare(settings.store.ollamaTimeout, 12.5);
        compare(field.text, "12.5x");
        settings.child("refinement").forceActiveFocus();
        compare(field.text, "12.5");
    }
    function test_volumes_data() {
        return [
            { tag: "soundVolume", property: "processingTransitionSoundVolume", text: "45%" },
            { tag: "previewVolume", property: "processingTransitionPreviewVolume", text: "70%" }
        ];
    }
    function test_volumes(row) {
        const settings = open(1);
        const slider = findChild(settings.child(row.tag), "slider");
        const caption = findChild(settings.child(row.tag), "caption");
        compare(caption.text, row.text);
        compare(caption.width, 44);
        compare(slider.width, 170);
        const before = settings.store[row.property];
        slider.forceActiveFocus();
        keyClick(Qt.Key_Right);
        fuzzyCompare(settings.store[row.property], before + 0.05, 1e-9);
        settings.store[row.property] = 0.25;
        compare(slider.value, 0.25);
        compare(caption.text, "25%");
    }
    function test_preview() {
        const settings = open(1);
        const preview = settings.child("preview");
        mouseClick(preview);
        mouseClick(preview);
        compare(settings.fixture.soundCalls(), ["Hero play", "Hero stop", "Hero play"]);
        settings.fixture.model.transitionSound = "none";
        verify(!preview.enabled);
    }
    function test_refinementHidesItsFieldsAndKeepsTheirValues() {
        const settings = open(2);
        const toggle = settings.child("refinement");
        const names = ["endpoint", "model", "timeout", "prompt"];
        settings.store.ollamaModel = "mine";
        verify(names.every(name => settings.child(name).visible));
        mouseClick(toggle);
        verify(!settings.store.refinementEnabled);
        verify(names.every(name => !settings.child(name).visible));
        compare(settings.store.ollamaModel, "mine");
        mouseClick(toggle);
        verify(names.every(name => settings.child(name).visible));
        compare(fieldOf(settings.child("model")).text, "mine");
    }
    function test_systemPrompt() {
        const settings = open(2);
        const area = settings.child("systemPrompt");
        const standard = settings.store.ollamaSystemPrompt;
        verify(area.height >= 140);
        compare(area.text, standard);
        settings.store.ollamaSystemPrompt = "Shout.";
        compare(area.text, "Shout.");
        settings.child("resetPrompt").clicked();
        compare(settings.store.ollamaSystemPrompt, standard);
        compare(area.text, standard);
    }
    function test_everyControlHasANameAndCanBeFocused() {
        const settings = open();
        const tabs = settings.child("tabs");
        for (const tab of [1, 2, 0]) {
            tabs.currentIndex = tab;
            waitForRendering(settings.view);
            tabs.forceActiveFocus();
            const seen = new Set();
            for (let step = 0; step < 20; ++step) {
                keyClick(Qt.Key_Tab);
                const item = test.Window.activeFocusItem;
                verify(item.Accessible.name !== "", item.toString());
                seen.add(item);
            }
            verify(seen.size >= 5, `tab ${tab} has ${seen.size}`);
        }
    }
}

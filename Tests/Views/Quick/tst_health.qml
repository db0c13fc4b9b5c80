import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Health"
    when: windowShown
    width: 700
    height: 640
    visible: true

    property HealthFixture fixture
    property StudioHealthView view
    readonly property var ids: ["microphone", "accessibility", "binary", "model", "ollama"]

    Component {
        id: fixtureComponent

        HealthFixture { }
    }
    Component {
        id: viewComponent

        StudioHealthView { anchors.fill: parent }
    }

    function init() {
        TolmiPalette.scheme = PaletteColors.Dark;
        fixture = createTemporaryObject(fixtureComponent, test);
        view = createTemporaryObject(viewComponent, test, { model: fixture.model, texts: fixture.texts });
        waitForRendering(view);
    }
    function cleanup() {
        view.destroy();
        TolmiPalette.scheme = PaletteColors.Dark;
    }
    function row(id) {
        return findChild(view, id);
    }
    function shown(id, part) {
        return findChild(row(id), part).text;
    }

    function test_checksWhenShown() {
        compare(fixture.probeCount, 1);
        for (const id of ids) {
            compare(shown(id, "message"), "Checking...");
            compare(findChild(row(id), "symbol").name, "hourglass");
            verify(!findChild(row(id), "hint").visible);
        }
        verify(!findChild(view, "run").enabled);
    }
    function test_showsTheOutcomeInOrder() {
        fixture.answerProbe(true);
        verify(findChild(view, "run").enabled);
        let last = 0;
        for (const id of ids) {
            compare(findChild(row(id), "symbol").name, "checkmark.circle.fill");
            verify(row(id).y > last);
            last = row(id).y;
        }
        compare(shown("microphone", "title"), "Microphone");
        compare(shown("microphone", "message"), "Granted");
        compare(shown("binary", "hint"), "/usr/local/bin/whisper-cli");
        compare(shown("ollama", "hint"), "http://localhost:11434");
    }
    function test_showsProblems() {
        fixture.isMicrophoneDenied = true;
        fixture.isModelThere = false;
        fixture.answerProbe(false);
        compare(findChild(row("ollama"), "symbol").name, "xmark.octagon.fill");
        compare(shown("ollama", "message"), "Unreachable");
        mouseClick(findChild(view, "run"));
        compare(fixture.probeCount, 2);
        compare(shown("ollama", "message"), "Checking...");
        fixture.answerProbe(true);
        compare(shown("ollama", "message"), "Reachable");
        compare(shown("model", "message"), "Model file missing");
        compare(shown("microphone", "message"), "Access denied");
        compare(shown("microphone", "hint"), "Allow Tolmi to use the microphone in your desktop's privacy settings.");
    }
    function test_warnsAboutDisabledFeatures() {
        fixture.answerProbe(true);
        fixture.disableRefinement();
        mouseClick(findChild(view, "run"));
        compare(findChild(row("ollama"), "symbol").name, "exclamationmark.triangle.fill");
        compare(shown("ollama", "message"), "Disabled");
        compare(fixture.probeCount, 1);
    }
    function test_busyButtonDoesNothing() {
        mouseClick(findChild(view, "run"));
        compare(fixture.probeCount, 1);
    }
    function test_runsByKeyboard() {
        fixture.answerProbe(false);
        const run = findChild(view, "run");
        run.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compare(fixture.probeCount, 2);
        fixture.answerProbe(true);
        verify(run.activeFocus);
        keyClick(Qt.Key_Return);
        compare(fixture.probeCount, 3);
    }
    function test_runsOnReturnToTheProgram() {
        fixture.answerProbe(true);
        fixture.isMicrophoneDenied = true;
        fixture.activate();
        fixture.answerProbe(true);
        compare(shown("microphone", "message"), "Access denied");
        fixture.isMicrophoneDenied = false;
        fixture.activate();
        fixture.answerProbe(true);
        compare(shown("microphone", "message"), "Granted");
    }
    function test_runsInAnotherLanguage() {
        fixture.answerProbe(true);
        fixture.speak("ro");
        compare(fixture.probeCount, 2);
        compare(shown("microphone", "message"), "Se verifica...");
        compare(findChild(view, "run").text, "Ruleaza din nou");
        fixture.answerProbe(true);
        compare(shown("microphone", "title"), "Microfon");
        compare(shown("ollama", "message"), "Accesibil");
    }
    function test_keepsItsRows() {
        const before = row("model");
        const y = before.y;
        fixture.answerProbe(true);
        waitForRendering(view);
        compare(before.y, y);
        mouseClick(findChild(view, "run"));
        fixture.answerProbe(true);
        compare(row("model"), before);
    }
    function test_drawsAWhiteMarkWithARingInTheLightScheme() {
        fixture.answerProbe(true);
        const ring = findChild(row("model"), "ring");
        const symbol = findChild(row("model"), "symbol");
        verify(!ring.visible);
        verify(Qt.colorEqual(symbol.color, "white"));
        TolmiPalette.scheme = PaletteColors.Light;
        verify(ring.visible);
        verify(Qt.colorEqual(symbol.color, "white"));
        verify(Qt.colorEqual(ring.border.color, TolmiPalette.chipStroke));
    }
    function test_drawsTroubleInGreys() {
        fixture.isModelThere = false;
        fixture.disableRefinement();
        fixture.activate();
        verify(Qt.colorEqual(findChild(row("model"), "symbol").color, TolmiPalette.smoke));
        verify(Qt.colorEqual(findChild(row("ollama"), "symbol").color, TolmiPalette.cloud));
        TolmiPalette.scheme = PaletteColors.Light;
        verify(!findChild(row("model"), "ring").visible);
    }
    function test_isNamedForThoseWhoCannotSee() {
        fixture.answerProbe(true);
        compare(row("microphone").Accessible.name, "Microphone: Granted");
        compare(row("microphone").Accessible.description, "Ready for recording.");
        compare(row("microphone").Accessible.role, Accessible.ListItem);
    }
}

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

    property HealthStage stage
    property StudioHealthView view
    readonly property var ids: ["microphone", "accessibility", "binary", "model", "ollama"]

    Component {
        id: stageComponent

        HealthStage { }
    }
    Component {
        id: viewComponent

        StudioHealthView { anchors.fill: parent }
    }

    function init() {
        TolmiPalette.scheme = PaletteColors.Dark;
        stage = createTemporaryObject(stageComponent, test);
        view = createTemporaryObject(viewComponent, test, { model: stage.model, texts: stage.texts });
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

    function test_checksWhenItAppears() {
        compare(stage.probeCount, 1);
        for (const id of ids) {
            compare(shown(id, "message"), "Checking...");
            compare(findChild(row(id), "symbol").name, "hourglass");
            verify(!findChild(row(id), "hint").visible);
        }
        verify(!findChild(view, "run").enabled);
    }
    function test_showsTheOutcomeInOrder() {
        stage.answerProbe(true);
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
    function test_tellsWhatIsWrong() {
        stage.isMicrophoneDenied = true;
        stage.isModelThere = false;
        stage.answerProbe(false);
        compare(findChild(row("ollama"), "symbol").name, "xmark.octagon.fill");
        compare(shown("ollama", "message"), "Unreachable");
        mouseClick(findChild(view, "run"));
        compare(stage.probeCount, 2);
        compare(shown("ollama", "message"), "Checking...");
        stage.answerProbe(true);
        compare(shown("ollama", "message"), "Reachable");
        compare(shown("model", "message"), "Model file missing");
        compare(shown("microphone", "message"), "Access denied");
        compare(shown("microphone", "hint"), "Allow Tolmi to use the microphone in your desktop's privacy settings.");
    }
    function test_warnsOfWhatIsSwitchedOff() {
        stage.answerProbe(true);
        stage.disableRefinement();
        mouseClick(findChild(view, "run"));
        compare(findChild(row("ollama"), "symbol").name, "exclamationmark.triangle.fill");
        compare(shown("ollama", "message"), "Disabled");
        compare(stage.probeCount, 1);
    }
    function test_aButtonThatIsBusyDoesNothing() {
        mouseClick(findChild(view, "run"));
        compare(stage.probeCount, 1);
    }
    function test_runsByKeyboard() {
        stage.answerProbe(false);
        const run = findChild(view, "run");
        run.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compare(stage.probeCount, 2);
        stage.answerProbe(true);
        verify(run.activeFocus);
        keyClick(Qt.Key_Return);
        compare(stage.probeCount, 3);
    }
    function test_runsOnReturnToTheProgram() {
        stage.answerProbe(true);
        stage.isMicrophoneDenied = true;
        stage.activate();
        stage.answerProbe(true);
        compare(shown("microphone", "message"), "Access denied");
        stage.isMicrophoneDenied = false;
        stage.activate();
        stage.answerProbe(true);
        compare(shown("microphone", "message"), "Granted");
    }
    function test_runsInAnotherLanguage() {
        stage.answerProbe(true);
        stage.speak("ro");
        compare(stage.probeCount, 2);
        compare(shown("microphone", "message"), "Se verifica...");
        compare(findChild(view, "run").text, "Ruleaza din nou");
        stage.answerProbe(true);
        compare(shown("microphone", "title"), "Microfon");
        compare(shown("ollama", "message"), "Accesibil");
    }
    function test_keepsItsRows() {
        const before = row("model");
        const y = before.y;
        stage.answerProbe(true);
        waitForRendering(view);
        compare(before.y, y);
        mouseClick(findChild(view, "run"));
        stage.answerProbe(true);
        compare(row("model"), before);
    }
    function test_drawsAWhiteMarkWithARingWhereItIsLight() {
        stage.answerProbe(true);
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
        stage.isModelThere = false;
        stage.disableRefinement();
        stage.activate();
        verify(Qt.colorEqual(findChild(row("model"), "symbol").color, TolmiPalette.smoke));
        verify(Qt.colorEqual(findChild(row("ollama"), "symbol").color, TolmiPalette.cloud));
        TolmiPalette.scheme = PaletteColors.Light;
        verify(!findChild(row("model"), "ring").visible);
    }
    function test_isNamedForThoseWhoCannotSee() {
        stage.answerProbe(true);
        compare(row("microphone").Accessible.name, "Microphone: Granted");
        compare(row("microphone").Accessible.description, "Ready for recording.");
        compare(row("microphone").Accessible.role, Accessible.ListItem);
    }
}

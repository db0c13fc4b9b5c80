import QtQuick
import Tolmi
import TolmiTesting

ViewCase {
    name: "CommandCenter"
    fixtures: Component {
        CommandCenterFixture { }
    }
    views: Component {
        StudioCommandCenterView { }
    }

    function pill() {
        return shown(item => item instanceof StatusPill)[0];
    }

    function test_pillFollowsTheState_data() {
        return [
            { tag: "Idle", icon: "checkmark.seal.fill", text: "Ready", tone: StatusPill.Success },
            { tag: "Recording", icon: "waveform.circle.fill", text: "Recording", tone: StatusPill.Accent },
            { tag: "Transcribing", icon: "hourglass", text: "Transcribing", tone: StatusPill.Neutral },
            { tag: "Done", icon: "checkmark.circle.fill", text: "Done", tone: StatusPill.Success },
            { tag: "Error", icon: "exclamationmark.triangle.fill", text: "Error", tone: StatusPill.Danger }
        ];
    }
    function test_pillFollowsTheState(data) {
        fixture.reach(data.tag);
        compare(pill().icon, data.icon);
        compare(pill().text, data.text);
        compare(pill().tone, data.tone);
        compare(shows("Microphone access denied"), data.tag === "Error");
    }
    function test_buttonDrivesTheFlow() {
        compare(button("Start Recording").tone, StudioButton.Primary);
        fixture.allowRecording();
        press("Start Recording");
        compare(button("Stop + Transcribe").tone, StudioButton.Danger);
        fixture.prepareTranscript("some words");
        press("Stop + Transcribe");
        compare(fixture.lastTranscript, "some words");
        compare(pill().text, "Done");
        verify(shows("1 total"));
    }
    function test_buttonWaitsForTheTranscription() {
        fixture.reach("Transcribing");
        verify(!button("Start Recording").enabled);
    }
    function test_meterRunsOnlyWhileRecording() {
        const wave = shown(item => item instanceof SignalWaveView)[0];
        verify(!wave.isActive);
        fixture.setLevel(1);
        fixture.reach("Recording");
        verify(wave.isActive);
        verify(wave.level > 0);
        fixture.prepareTranscript("");
        press("Stop + Transcribe");
        verify(!wave.isActive);
        compare(wave.level, 0);
    }
    function test_reminderDisappearsWithTheOnboarding() {
        const history = button("Open History");
        const before = placeOf(history).y;
        verify(shows("Progress: 1/3"));
        fixture.setDisplayName("Ana");
        verify(shows("Progress: 2/3"));
        mouseClick(button("Continue onboarding"));
        compare(fixture.resumptions, 1);
        fixture.finishOnboarding();
        verify(!shows("Finish onboarding"));
        tryVerify(() => placeOf(history).y < before);
    }
    function test_cardsSummariseTheHistory() {
        verify(shows("0 total"));
        verify(shown(item => String(item.text).startsWith("Last destination")).length === 0);
        fixture.addEntry("Thunderbird");
        verify(shows("1 total"));
        verify(shows("Last destination: Thunderbird"));
        fixture.advance(1);
        fixture.addEntry("");
        verify(shows("Last destination: Unknown target"));
    }
    function test_cardsNavigateToTheWorkspaces() {
        mouseClick(button("Open Dictation Live"));
        mouseClick(button("Open History"));
        mouseClick(button("Open Templates"));
        mouseClick(button("Run Health Checks"));
        mouseClick(shown(item => item instanceof ProfileChip)[0]);
        compare(fixture.destinations, ["dictationLive", "history", "templates", "health", "profile"]);
    }
    function test_speaksRomanian() {
        fixture.addEntry("Writer");
        fixture.speakRomanian();
        verify(shows("Centru comenzi"));
        verify(shows("Gata"));
        verify(shows("Porneste inregistrarea"));
        verify(shows("Ultima destinatie: Writer"));
        verify(shows("Progres: 2/3"));
    }
    function test_tabReachesEveryControlAndScrollsToIt() {
        view.height = 260;
        const order = [];
        view.forceActiveFocus();
        for (let presses = 0; presses < 7; ++presses) {
            keyClick(Qt.Key_Tab);
            const focused = view.Window.activeFocusItem;
            order.push(focused.text);
            const top = placeOf(focused).y;
            verify(top >= 0 && top + focused.height <= view.height, focused.text);
        }
        compare(order, ["User", "Continue onboarding", "Start Recording", "Open Dictation Live", "Open History",
                "Open Templates", "Run Health Checks"]);
    }
    function test_narrowPageStacksTheCards() {
        const left = button("Open History");
        const right = button("Run Health Checks");
        compare(placeOf(left).y, placeOf(right).y);
        view.width = 480;
        tryVerify(() => placeOf(left).x === placeOf(right).x);
        for (const control of shown(item => item instanceof StudioButton)) {
            verify(placeOf(control).x + control.width <= 480 - 20, control.text);
            verify(control.width >= control.implicitWidth, control.text);
        }
    }
}

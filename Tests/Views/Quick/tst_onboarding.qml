import QtQuick
import Tolmi
import TolmiTesting

ViewCase {
    name: "Onboarding"
    width: 680
    height: 540
    fixtures: Component {
        OnboardingFixture { }
    }
    views: Component {
        OnboardingWizardView { }
    }

    function nameField() {
        return shown(item => item instanceof StudioTextField)[0];
    }
    function typeName(name) {
        // The field has the focus, with the default name selected.
        for (const letter of name)
            keyClick(letter);
    }
    /// The symbols of the three steps, in order.
    function stepSymbols() {
        return shown(item => item instanceof OnboardingProgress)[0].symbols;
    }
    function goTo(index) {
        fixture.setDisplayName("Ana");
        for (let step = 0; step < index; ++step)
            press("Continue");
    }

    function test_leadsFromNothingToADictation() {
        compare(stepSymbols(), ["circle.inset.filled", "circle", "circle"]);
        verify(!button("Continue").enabled);
        verify(!button("Back").enabled);
        typeName("Ana");
        compare(fixture.displayName, "Ana");
        compare(stepSymbols()[0], "checkmark.circle.fill");
        press("Continue");
        verify(shows("Microphone"));
        verify(shows("Accessibility"));
        press("Continue");
        verify(!button("Finish onboarding").enabled);
        verify(shows("Record and transcribe once to complete this step."));
        fixture.allowRecording();
        press("Start Recording");
        verify(shows("Recording"));
        fixture.prepareTranscript("hello");
        press("Stop + Transcribe");
        verify(shows("Dictation test completed."));
        compare(stepSymbols(), Array(3).fill("checkmark.circle.fill"));
        compare(fixture.closings, 0);
        press("Finish onboarding");
        compare(fixture.closings, 1);
        verify(fixture.isFinished);
    }
    function test_whatIsDoneIsTold() {
        const names = () => shown(item => item.Accessible.role === Accessible.ListItem).map(item => item.Accessible.name);
        const done = () => shown(item => item.Accessible.role === Accessible.ListItem).map(item => item.Accessible.checked);
        compare(names(), ["Profile", "Permissions", "Dictation Test"]);
        compare(done(), [false, false, false]);
        fixture.refuseRights();
        goTo(1);
        compare(names(), ["Profile: Done", "Permissions", "Dictation Test", "Microphone: Access missing",
                          "Accessibility: Access missing"]);
        compare(done(), [true, false, false, false, false]);
        const microphone = shown(item => item.Accessible.name === "Microphone: Access missing")[0];
        compare(microphone.Accessible.description,
                "Access denied. Allow Tolmi to use the microphone in your desktop's privacy settings.");
        press("Grant microphone");
        fixture.answerMicrophone(true);
        compare(names()[3], "Microphone: Granted");
        compare(done()[3], true);
    }
    function test_nameUserDoesNotPass() {
        typeName("User");
        verify(!button("Continue").enabled);
    }
    function test_returnInTheNameFieldContinues() {
        keyClick(Qt.Key_Return);
        compare(view.model.currentStepIndex, 0);
        typeName("Ana");
        keyClick(Qt.Key_Return);
        compare(view.model.currentStepIndex, 1);
    }
    function test_backKeepsWhatWasEntered() {
        goTo(1);
        press("Back");
        compare(nameField().text, "Ana");
        verify(!button("Back").enabled);
    }
    function test_skipCloses() {
        goTo(1);
        press("Skip for now");
        compare(fixture.closings, 1);
        verify(!fixture.isFinished);
    }
    function test_presetIsChosen() {
        const picker = shown(item => item instanceof StudioPicker)[0];
        compare(picker.count, 4);
        picker.picked("sparkles");
        compare(shown(item => item instanceof AvatarView)[0].symbol, "sparkles");
    }
    function test_avatarFailureIsTold() {
        for (let times = 0; times < 2; ++times) {
            mouseClick(button("Upload avatar"));
            fixture.failAvatar();
            compare(view.model.avatarErrorMessage, "This file is too large. Choose an image under 10MB.");
            tryVerify(() => view.Window.activeFocusItem.text === "OK");
            keyClick(Qt.Key_Return);
            tryCompare(view.model, "avatarErrorMessage", "");
        }
    }
    function test_missingRightsTellTheWayOut() {
        fixture.refuseRights();
        goTo(1);
        verify(!button("Continue").enabled);
        verify(shows("Access denied. Allow Tolmi to use the microphone in your desktop's privacy settings."));
        verify(shown(item => String(item.text).startsWith("Access missing. ")).length === 1);
        button("Grant accessibility");
        button("Grant microphone");
    }
    function test_microphoneIsAskedFor() {
        fixture.forgetMicrophone();
        goTo(1);
        press("Grant microphone");
        fixture.answerMicrophone(true);
        compare(shown(item => item.text === "Grant microphone").length, 0);
        verify(button("Continue").enabled);
    }
    function test_missingTranscriptionTellsTheWayOut() {
        fixture.removeTranscription();
        goTo(2);
        verify(shows("whisper-cli: Binary missing or not executable."));
        verify(shows("Whisper model: Model file missing. Choose \"Skip for now\" and set the path in Settings > Engine; "
                     + "this step waits for you."));
    }
    function test_everythingThatIsMissingFitsTheSmallestSize() {
        view.width = 640;
        view.height = 460;
        fixture.speakRomanian();
        goTo(0);
        press("Continua");
        press("Continua");
        fixture.refuseRights();
        fixture.removeTranscription();
        const page = shown(item => item instanceof Flickable && item.contentHeight > 0)[0];
        tryVerify(() => page.contentHeight > 180);
        verify(page.contentHeight <= page.height, page.contentHeight + " in " + page.height);
    }
    function test_failedDictationStaysPending() {
        goTo(2);
        fixture.reach("Error");
        press("Start Recording");
        verify(shows("Error"));
        verify(!button("Finish onboarding").enabled);
        fixture.advance(3);
        verify(shown(item => String(item.text).startsWith("Microphone access denied")).length === 1);
    }
    function test_busyButtonIsDisabled() {
        goTo(2);
        fixture.reach("Transcribing");
        verify(!button("Start Recording").enabled);
        verify(shows("Transcribing"));
    }
    function test_tabStaysInOrder() {
        fixture.setDisplayName("Ana");
        nameField().forceActiveFocus();
        const order = [];
        for (let presses = 0; presses < 4; ++presses) {
            keyClick(Qt.Key_Tab);
            const item = view.Window.activeFocusItem;
            order.push(item.text ?? item.label);
        }
        compare(order.slice(1), ["Upload avatar", "Continue", "Skip for now"]);
    }
    function test_stepTakesTheKeyboard() {
        goTo(2);
        compare(view.Window.activeFocusItem.text, "Start Recording");
    }
    function test_speaksRomanian() {
        fixture.speakRomanian();
        verify(shows("Bine ai venit in Tolmi"));
        verify(shows("Profil"));
        verify(shows("Continua"));
    }
    function test_fitsItsSmallestSize() {
        fixture.removeTranscription();
        view.width = 640;
        view.height = 460;
        fixture.speakRomanian();
        fixture.setDisplayName("Ana");
        for (const title of ["Continua", "Continua", ""]) {
            for (const control of shown(item => item instanceof StudioButton))
                verify(placeOf(control).x >= 20 && placeOf(control).x + control.width <= 620, control.text);
            if (title !== "")
                press(title);
        }
    }
}

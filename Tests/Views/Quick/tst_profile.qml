import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: test

    name: "Profile"
    when: windowShown
    width: 760
    height: 1000
    visible: true

    Component {
        id: fixtures

        ProfileFixture { }
    }
    Component {
        id: views

        ProfileWorkspaceView { }
    }

    property ProfileWorkspaceView view: null

    /// Before the view's model is destroyed.
    function cleanup() {
        view.destroy();
        wait(0);
    }
    function open(): var {
        const fixture = createTemporaryObject(fixtures, test);
        view = views.createObject(test, { model: fixture.model, texts: fixture.texts });
        waitForRendering(view);
        return { fixture: fixture, model: fixture.model, view: view, child: name => findChild(view, name) };
    }

    function test_cardsInTheirOrder() {
        const profile = open();
        const cards = ["identity", "avatar", "checklist", "healthScore"].map(profile.child);
        compare(cards.map(card => card.title),
                ["Identity", "Avatar", "Onboarding checklist", "Profile Health Score"]);
        for (let index = 1; index < cards.length; ++index)
            verify(cards[index].y > cards[index - 1].y);
    }
    function test_nameIsStoredAsOneWrites() {
        const profile = open();
        const field = profile.child("displayName");
        compare(field.width, 260);
        compare(field.placeholderText, "Your name");
        field.forceActiveFocus();
        field.selectAll();
        for (const letter of "Ana ")
            keyClick(letter);
        compare(field.text, "Ana ");
        compare(profile.model.displayName, "Ana");
        verify(profile.child("profileStep").isComplete);
        profile.child("upload").forceActiveFocus();
        compare(field.text, "Ana");
    }
    function test_presetIsShownInThePreview() {
        const profile = open();
        const picker = profile.child("preset");
        compare(picker.options.map(option => option.symbol), picker.options.map(option => option.value));
        picker.currentIndex = 2;
        picker.activated(2);
        compare(profile.model.avatarPreset, "sparkles");
        compare(profile.child("preview").symbol, "sparkles");
    }
    function test_removingIsOfferedForAPictureOnly() {
        const profile = open();
        verify(!profile.child("remove").visible);
        profile.fixture.useCustomAvatar();
        verify(profile.child("remove").visible);
        mouseClick(profile.child("remove"));
        verify(!profile.model.hasCustomAvatar);
        verify(!profile.child("remove").visible);
    }
    function test_aFailureIsToldUntilItIsDismissed() {
        const profile = open();
        const dialog = profile.child("avatarError");
        verify(!dialog.visible);
        mouseClick(profile.child("upload"));
        compare(profile.fixture.panelCount(), 1);
        profile.fixture.choose("/home/user/notes.txt");
        tryVerify(() => dialog.opened);
        compare(dialog.title, "Avatar update failed");
        compare(dialog.message, "Only image files are supported.");
        compare(dialog.confirmText, "OK");
        dialog.accept();
        tryVerify(() => !dialog.visible);
        compare(profile.model.avatarErrorMessage, "");
        // The next failure is shown again.
        profile.model.importAvatar();
        profile.fixture.choose("/home/user/notes.txt");
        tryVerify(() => dialog.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !dialog.visible);
        compare(profile.model.avatarErrorMessage, "");
    }
    function test_thinkingBetterOfItTellsNothing() {
        const profile = open();
        mouseClick(profile.child("upload"));
        profile.fixture.choose("");
        verify(!profile.child("avatarError").visible);
    }
    function test_checklistFollowsTheProgress() {
        const profile = open();
        const steps = ["profileStep", "permissionsStep", "dictationStep"].map(profile.child);
        compare(steps.map(step => step.symbol), ["circle", "circle", "circle"]);
        compare(findChild(profile.child("checklist"), "caption").text, "Progress: 0/3");
        profile.fixture.addDictation();
        profile.fixture.grantEverything();
        compare(steps.map(step => step.isComplete), [false, true, true]);
        compare(steps[1].symbol, "checkmark.circle.fill");
        compare(findChild(profile.child("checklist"), "caption").text, "Progress: 2/3");
    }
    function test_resumeIsOfferedUntilTheWizardIsFinished() {
        const profile = open();
        const buttons = ["resumeAtTop", "resumeInChecklist"].map(profile.child);
        verify(buttons.every(button => button.visible));
        for (const button of buttons)
            mouseClick(button);
        compare(profile.fixture.resumeCount(), 2);
        profile.fixture.completeOnboarding();
        verify(buttons.every(button => !button.visible));
    }
    function test_scoreAndRecommendations() {
        const profile = open();
        compare(profile.child("score").text, "0/100");
        compare(profile.child("score").font.pixelSize, 18);
        compare(profile.child("recommendations").count, 5);
        verify(profile.child("recommendationsTitle").visible);
        verify(!profile.child("readyMessage").visible);
        profile.model.displayName = "Ana";
        profile.model.avatarPreset = "sparkles";
        profile.fixture.addDictation();
        profile.fixture.grantEverything();
        compare(profile.child("score").text, "100/100");
        compare(profile.child("recommendations").count, 0);
        verify(!profile.child("recommendationsTitle").visible);
        verify(profile.child("readyMessage").visible);
    }
    function test_tabOrder() {
        const profile = open();
        profile.fixture.useCustomAvatar();
        profile.child("resumeAtTop").forceActiveFocus();
        for (const name of ["displayName", "preset", "upload", "remove", "resumeInChecklist"]) {
            keyClick(Qt.Key_Tab);
            verify(profile.child(name).activeFocus, name);
            verify(profile.child(name).Accessible.name !== "", name);
        }
    }
}

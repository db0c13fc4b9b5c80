import QtQuick
import QtTest
import Tolmi
import TolmiTesting

TestCase {
    id: testCase

    name: "Studio"
    width: 1100
    height: 700
    visible: true
    when: windowShown

    Component {
        id: fixtures

        StudioWindowFixture { }
    }
    Component {
        id: studios

        TolmiStudioWindowView {
            anchors.fill: parent
        }
    }

    property var fixture
    property var studio

    function init() {
        Motion.isReduced = true;
        fixture = fixtures.createObject(testCase);
        const views = { onboarding: Qt.resolvedUrl("StudioStandIn.qml") };
        for (const destination of fixture.model.destinations)
            views[destination.name] = Qt.resolvedUrl("StudioStandIn.qml");
        studio = studios.createObject(testCase, { model: fixture.model, texts: fixture.texts, views: views });
        studio.forceActiveFocus();
    }

    // In this order, because the view uses its model until destroyed.
    function cleanup() {
        studio.destroy();
        fixture.destroy();
        wait(0);
    }

    function selection() {
        return fixture.model.selection;
    }

    function row(title) {
        return findAll(studio, item => item instanceof SidebarRow && item.text === title)[0];
    }

    function findAll(item, matches) {
        let found = matches(item) ? [item] : [];
        for (let index = 0; index < item.children.length; ++index)
            found = found.concat(findAll(item.children[index], matches));
        return found;
    }

    function test_rowsBearTheNamesInTheLanguage() {
        const titles = () => findAll(studio, item => item instanceof SidebarRow).map(item => item.text);
        compare(titles(), ["Command Center", "Profile", "Dictation Live", "History", "Templates", "Health", "Settings"]);
        fixture.speakRomanian();
        compare(titles(), ["Centru comenzi", "Profil", "Dictare live", "Istoric", "Sabloane", "Diagnostic", "Setari"]);
        compare(row("Istoric").Accessible.role, Accessible.ListItem);
        compare(row("Istoric").Accessible.name, "Istoric");
    }

    function test_clickGoesThere() {
        mouseClick(row("History"));
        compare(selection(), "history");
        verify(row("History").highlighted);
        verify(!row("Command Center").highlighted);
    }

    function test_arrowsGoUpAndDownAndStopAtTheEnds() {
        keyClick(Qt.Key_Up);
        compare(selection(), "commandCenter");
        keyClick(Qt.Key_Down);
        compare(selection(), "profile");
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Up);
        compare(selection(), "profile");
        verify(row("Profile").activeFocus);
        keyClick(Qt.Key_End);
        compare(selection(), "settings");
        keyClick(Qt.Key_Down);
        compare(selection(), "settings");
        keyClick(Qt.Key_Home);
        compare(selection(), "commandCenter");
    }

    function test_numbersGoThere() {
        const names = ["commandCenter", "profile", "dictationLive", "history", "templates", "health", "settings"];
        for (let index = names.length - 1; index >= 0; --index) {
            keyClick(Qt.Key_1 + index, Qt.ControlModifier);
            compare(selection(), names[index]);
        }
    }

    function test_commaOpensTheSettings() {
        keyClick(Qt.Key_Comma, Qt.ControlModifier);
        compare(selection(), "settings");
    }

    function test_qQuits() {
        keyClick(Qt.Key_Q, Qt.ControlModifier);
        compare(fixture.quits, 1);
    }

    function test_keysWorkUnderTheWizard() {
        fixture.model.isShowingOnboarding = true;
        const wizards = () => findAll(studio.Window.contentItem, item => item.objectName === "standIn");
        tryVerify(() => wizards().length === 2);
        tryVerify(() => !studio.activeFocus);
        keyClick(Qt.Key_4, Qt.ControlModifier);
        compare(selection(), "history");
        keyClick(Qt.Key_Comma, Qt.ControlModifier);
        compare(selection(), "settings");
        verify(!studio.activeFocus);
        keyClick(Qt.Key_Q, Qt.ControlModifier);
        compare(fixture.quits, 1);
        fixture.model.isShowingOnboarding = false;
    }
    function test_theWizardKeepsTheKeyboardWhileTheWindowIsHidden() {
        fixture.model.isShowingOnboarding = true;
        tryVerify(() => !studio.activeFocus);
        studio.hasWorkspace = false;
        verify(!studio.activeFocus);
        studio.hasWorkspace = true;
        verify(!studio.activeFocus);
        fixture.model.isShowingOnboarding = false;
        tryVerify(() => row("Command Center").activeFocus);
    }
    function test_keysOfANoticeAreItsOwn() {
        fixture.tell("Export failed", "No space left on device");
        const dialog = findChild(studio, "noticeDialog");
        tryVerify(() => dialog.opened);
        compare([dialog.title, dialog.message], ["Export failed", "No space left on device"]);
        keyClick(Qt.Key_4, Qt.ControlModifier);
        compare(selection(), "commandCenter");
        keyClick(Qt.Key_Return);
        tryVerify(() => !dialog.visible);
        verify(!fixture.model.showingNotice);
        keyClick(Qt.Key_4, Qt.ControlModifier);
        compare(selection(), "history");
    }
    function test_withoutATrayTheProgramEndsInTheSidebar() {
        verify(!findChild(studio, "quit"));
        fixture.setTray(false);
        fixture.model.isShowingOnboarding = false;
        tryVerify(() => studio.activeFocus);
        const quit = findChild(studio, "quit");
        verify(quit.visible);
        compare(quit.text, "Quit Tolmi");
        compare(quit.Accessible.role, Accessible.Button);
        row("Command Center").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        verify(quit.activeFocus);
        keyClick(Qt.Key_Down);
        compare(selection(), "commandCenter");
        keyClick(Qt.Key_Return);
        compare(fixture.quits, 1);
        mouseClick(quit);
        compare(fixture.quits, 2);
        fixture.setTray(true);
        tryVerify(() => !findChild(studio, "quit"));
    }
    function test_tabLeavesTheSidebarForTheWorkspace() {
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Tab);
        verify(studio.workspace.activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(row("Profile").activeFocus);
    }

    function test_keyboardStaysInTheSidebarWhenItsWorkspaceGoes() {
        keyClick(Qt.Key_Tab);
        verify(studio.workspace.activeFocus);
        fixture.model.selection = "history";
        verify(row("History").activeFocus);
    }

    function test_onlyTheShownWorkspaceLives() {
        for (const destination of fixture.model.destinations)
            fixture.model.selection = destination.name;
        fixture.model.selection = "templates";
        tryCompare(fixture, "liveModels", 1);
        compare(findAll(studio, item => item.objectName === "standIn").length, 1);
    }

    function test_workspaceWithoutAModelShowsItsTitleOnly() {
        const titles = () => findAll(studio.workspace, item => item instanceof StudioText && item.visible).map(item => item.text);
        compare(titles(), []);
        fixture.model.selection = "health";
        compare(titles(), ["Health"]);
        fixture.speakRomanian();
        compare(titles(), ["Diagnostic"]);
    }

    function test_workspacesFadeIntoEachOther() {
        Motion.isReduced = false;
        const old = studio.workspace;
        fixture.model.selection = "profile";
        verify(!old.enabled);
        verify(studio.workspace.opacity < 1);
        tryCompare(studio.workspace, "opacity", 1);
        tryCompare(fixture, "liveModels", 1);
    }

    function test_wizardLiesOverTheWorkspaceUntilItIsClosed() {
        const sheet = () => findAll(studio.Window.contentItem, item => item.objectName === "standIn").length;
        compare(sheet(), 1);
        fixture.model.isShowingOnboarding = true;
        tryVerify(() => sheet() === 2);
        compare(fixture.liveModels, 2);
        fixture.model.isShowingOnboarding = false;
        tryCompare(fixture, "liveModels", 1);
        compare(selection(), "commandCenter");
    }

    function test_historyNeedsAWideWindow() {
        compare(studio.minimumSize, Qt.size(920, 600));
        fixture.model.selection = "history";
        compare(studio.minimumSize, Qt.size(1140, 620));
    }
}

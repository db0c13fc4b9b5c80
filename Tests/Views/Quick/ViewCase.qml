import QtQuick
import QtTest
import Tolmi

/// Base of the tests of one view: each test gets a new view and a new fixture.
TestCase {
    id: test

    required property Component fixtures
    required property Component views
    property var fixture: null
    property Item view: null

    when: windowShown
    width: 900
    height: 700
    visible: true

    function init() {
        fixture = createTemporaryObject(fixtures, test);
        view = views.createObject(test, {
            model: fixture.model, texts: fixture.texts, width: test.width, height: test.height
        });
    }
    function cleanup() {
        // Before the fixture, because the view uses its model.
        view.destroy();
        wait(0);
    }
    function itemsBelow(item, condition) {
        let found = [];
        for (let index = 0; index < item.children.length; ++index) {
            const child = item.children[index];
            if (condition(child))
                found.push(child);
            found = found.concat(itemsBelow(child, condition));
        }
        return found;
    }
    /// The visible items of the view for which `condition` holds.
    function shown(condition) {
        return itemsBelow(view, item => item.visible && condition(item));
    }
    function shows(text) {
        return shown(item => item.text === text).length > 0;
    }
    /// The one visible button with this title.
    function button(title) {
        const found = shown(item => item instanceof StudioButton && item.text === title);
        compare(found.length, 1, title);
        return found[0];
    }
    /// Clicks and runs the consequences.
    function press(title) {
        mouseClick(button(title));
        fixture.runPosted();
    }
    function placeOf(item) {
        return item.mapToItem(view, 0, 0);
    }
    /// The texts of the first `count` controls in tab order.
    function tabOrder(count) {
        const order = [];
        view.forceActiveFocus();
        for (let presses = 0; presses < count; ++presses) {
            keyClick(Qt.Key_Tab);
            order.push(test.Window.activeFocusItem.text);
        }
        return order;
    }
}

import QtQuick
import QtTest
import Tolmi

TestCase {
    id: test

    name: "Fields"
    when: windowShown
    width: 400
    height: 400
    visible: true

    Component {
        id: field

        StudioTextField {
            property var edits: []

            onEdited: newText => edits.push(newText)
        }
    }
    Component {
        id: trimmingField

        // A store that trims, as for the display name.
        StudioTextField {
            onEdited: newText => value = newText.trim()
        }
    }
    Component {
        id: area

        StudioTextArea {
            property var edits: []

            width: 300
            onEdited: newText => edits.push(newText)
        }
    }
    Component {
        id: row

        PremiumTextFieldRow {
            title: "Name"
            icon: "person.crop.circle"
            placeholder: "Your name"
        }
    }
    Component {
        id: textBox

        TextBox {
            width: 200
            text: "One two three four five six seven eight nine ten eleven twelve thirteen fourteen fifteen"
        }
    }
    Item {
        id: elsewhere

        focus: true
    }

    function type(text) {
        for (const letter of text)
            keyClick(letter);
    }

    function test_editsAreReported() {
        const control = createTemporaryObject(field, test);
        control.forceActiveFocus();
        type("ab");
        compare(control.edits, ["a", "ab"]);
    }
    function test_fieldShowsItsValue() {
        const control = createTemporaryObject(field, test, { value: "one" });
        compare(control.text, "one");
        control.value = "two";
        compare(control.text, "two");
    }
    function test_fieldKeepsItsTextWhileFocused() {
        const control = createTemporaryObject(trimmingField, test);
        control.forceActiveFocus();
        type("a b");
        keyClick(Qt.Key_Space);
        compare(control.text, "a b ");
        compare(control.value, "a b");
        elsewhere.forceActiveFocus();
        compare(control.text, "a b");
    }
    function test_disabledFieldIgnoresInput() {
        const control = createTemporaryObject(field, test, { enabled: false });
        mouseClick(control);
        verify(!control.activeFocus);
    }
    function test_areaReportsItsEdits() {
        const control = createTemporaryObject(area, test, { value: "" });
        mouseClick(control);
        type("x");
        compare(control.edits, ["x"]);
        compare(control.text, "x");
    }
    function test_areaShowsItsValue() {
        const control = createTemporaryObject(area, test, { value: "one" });
        control.value = "two";
        compare(control.text, "two");
        compare(control.edits, []);
    }
    function test_premiumRow() {
        const control = createTemporaryObject(row, test);
        mouseClick(control, 40, control.height - 10);
        type("A");
        compare(control.text, "A");
    }
    function test_textBoxGivesEveryLineItsHeight() {
        const control = createTemporaryObject(textBox, test, { text: "One" });
        const height = control.implicitHeight;
        for (const text of ["One\nTwo", "Three\nfour"]) {
            control.text = text;
            compare(control.implicitHeight, height + Typography.body.lineHeight);
        }
    }
    function test_textBoxElides() {
        const control = createTemporaryObject(textBox, test);
        const whole = control.implicitHeight;
        control.maximumLines = 1;
        verify(control.implicitHeight < whole);
    }
}

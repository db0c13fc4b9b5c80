import QtQuick
import QtQuick.Templates as T

/// A scrolling multi-line text field; reports edits like StudioTextField.
Item {
    id: area

    property string value
    /// The accessible name.
    property string label
    property bool isMonospaced: false
    /// Whether the text can only be read and selected; the arrow keys then scroll.
    property bool isReadOnly: false
    readonly property alias text: editor.text

    signal edited(string newText)

    implicitWidth: 320
    implicitHeight: 140
    opacity: enabled ? 1 : 0.42

    FieldPlate {
        anchors.fill: parent
        radius: Metrics.chipRadius
        fill: TolmiPalette.editorFill
        border: TolmiPalette.editorStroke
        isFocused: editor.activeFocus
    }
    Flickable {
        id: flickable

        anchors.fill: parent
        anchors.margins: 1
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: StudioScrollBar {
            id: scrollBar

            stepSize: 0.1
        }

        T.TextArea.flickable: T.TextArea {
            id: editor

            padding: 10
            wrapMode: TextEdit.Wrap
            font: area.isMonospaced ? Typography.monospace.font : Typography.body.font
            color: TolmiPalette.primaryText
            selectionColor: TolmiPalette.faded(TolmiPalette.frost, 0.24)
            selectedTextColor: TolmiPalette.primaryText
            selectByMouse: true
            textFormat: TextEdit.PlainText
            readOnly: area.isReadOnly
            renderType: Text.NativeRendering
            KeyNavigation.priority: KeyNavigation.BeforeItem
            KeyNavigation.tab: editor.nextItemInFocusChain(true)
            KeyNavigation.backtab: editor.nextItemInFocusChain(false)
            Keys.enabled: area.isReadOnly
            Keys.onUpPressed: scrollBar.decrease()
            Keys.onDownPressed: scrollBar.increase()
            activeFocusOnTab: enabled
            Accessible.name: area.label
            Accessible.editable: enabled && !area.isReadOnly
            Accessible.readOnly: area.isReadOnly
            onTextChanged: {
                if (activeFocus && !area.isReadOnly)
                    area.edited(text);
            }

            Binding {
                target: editor
                property: "text"
                value: area.value
                when: area.isReadOnly || !editor.activeFocus
                restoreMode: Binding.RestoreNone
            }
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A single-line text field. While focused, it keeps its own text and emits `edited` for every edit; on blur the text
/// is `value` again.
T.TextField {
    id: field

    property string value
    /// The accessible name, if there is no label.
    property string label
    /// Name of a symbol before the text; none when empty.
    property string symbol
    property bool isMonospaced: false
    property bool isOnBackdrop: false

    signal edited(string newText)

    implicitWidth: 260
    implicitHeight: 30
    leftPadding: symbol === "" ? 10 : 30
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    font: isMonospaced ? Typography.monospace.font : Typography.body.font
    color: TolmiPalette.primaryText
    selectionColor: TolmiPalette.faded(TolmiPalette.frost, 0.24)
    selectedTextColor: TolmiPalette.primaryText
    placeholderTextColor: TolmiPalette.tertiaryText
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    selectByMouse: true
    renderType: Text.NativeRendering
    activeFocusOnTab: enabled
    Accessible.name: label === "" ? placeholderText : label
    Accessible.editable: enabled
    onTextEdited: edited(text)
    onTextChanged: {
        // Text that does not fit is cut off at the end, not at the start.
        if (!activeFocus)
            cursorPosition = 0;
    }

    Binding {
        target: field
        property: "text"
        value: field.value
        when: !field.activeFocus
        restoreMode: Binding.RestoreNone
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        x: 9
        visible: name !== ""
        name: field.symbol
        size: 14
        color: TolmiPalette.secondaryText
    }
    StudioText {
        anchors.verticalCenter: parent.verticalCenter
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        visible: field.text === "" && field.preeditText === ""
        text: field.placeholderText
        color: field.placeholderTextColor
        Accessible.ignored: true
    }
    background: FieldPlate {
        isFocused: field.activeFocus
        isHovered: field.hovered
        isOnBackdrop: field.isOnBackdrop
    }
    cursorDelegate: Rectangle {
        width: 1.5
        color: TolmiPalette.frost
        visible: field.cursorVisible
    }
}

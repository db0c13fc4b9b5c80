import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A drop-down list. `options` are objects with `value`, `text` and an optional `symbol`. With a value that is not
/// among them the picker is empty.
T.ComboBox {
    id: picker

    property var options: []
    property var value
    /// The accessible name, if there is no label.
    property string label

    /// The user chose this value.
    signal picked(var newValue)

    implicitWidth: Math.max(110, Math.ceil(widest.width) + 46)
    implicitHeight: 28
    leftPadding: 10
    rightPadding: 26
    opacity: enabled ? 1 : 0.42
    hoverEnabled: true
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    model: options
    textRole: "text"
    valueRole: "value"
    currentIndex: options.findIndex(option => option.value === value)
    Accessible.focusable: activeFocusOnTab
    Accessible.role: Accessible.ComboBox
    Accessible.name: label
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()
    // Opens on release, like the other keys: after opening on press, the list would treat the release as a choice.
    Keys.onReleased: event => {
        if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !popup.visible) {
            popup.open();
            event.accepted = true;
        }
    }
    onActivated: index => {
        picked(options[index].value);
        // Bind again, because the store may have rejected the choice.
        currentIndex = Qt.binding(() => options.findIndex(option => option.value === value));
    }

    TextMetrics {
        id: widest

        font: Typography.value.font
        text: picker.displayText
    }

    background: Item {
        Plate {
            anchors.fill: parent
            radius: Metrics.fieldRadius
            fill: TolmiPalette.chipFill
            endFill: TolmiPalette.subtleFill
            border: TolmiPalette.surfaceStroke
        }
        HoverVeil {
            radius: Metrics.fieldRadius
            color: TolmiPalette.subtleFill
            isShown: picker.hovered || picker.popup.visible
        }
        FocusRing {
            visible: picker.visualFocus
            cornerRadius: Metrics.fieldRadius
        }
    }
    contentItem: StudioText {
        role: Typography.value
        text: picker.displayText
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: picker.mirrored ? 7 : picker.width - width - 7
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.up.chevron.down"
        size: 14
        stroke: 2.2
        color: TolmiPalette.secondaryText
    }
    delegate: T.ItemDelegate {
        id: option

        required property var modelData
        required property int index

        width: ListView.view ? ListView.view.width : 0
        implicitWidth: row.implicitWidth
        implicitHeight: 30
        highlighted: picker.highlightedIndex === index
        hoverEnabled: true
        Accessible.role: Accessible.ListItem
        Accessible.name: modelData.text
        Accessible.selected: picker.currentIndex === index
        Accessible.onPressAction: clicked()
        contentItem: MenuRow {
            id: row

            text: option.modelData.text
            symbol: option.modelData.symbol ?? ""
            isChecked: picker.currentIndex === option.index
            isHighlighted: option.highlighted
        }
    }
    popup: T.Popup {
        y: picker.height + 4
        width: Math.max(picker.width, 180)
        height: Math.min(list.contentHeight + 12, 320)
        margins: 8
        padding: 6

        enter: Transition {
            NumberAnimation {
                property: "opacity"
                from: 0
                to: 1
                duration: Motion.popup
                easing.type: Easing.OutCubic
            }
        }
        background: MenuPlate { }
        contentItem: ListView {
            id: list

            clip: true
            implicitHeight: contentHeight
            boundsBehavior: Flickable.StopAtBounds
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
            T.ScrollBar.vertical: StudioScrollBar { }
        }
    }
}

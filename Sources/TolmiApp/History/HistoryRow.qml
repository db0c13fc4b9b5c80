import QtQuick
import Tolmi

/// One entry in the list. Only the focused one is reached by the tabulator key.
Item {
    id: row

    required property int index
    required property var entryID
    required property string title
    required property string preview
    required property string relativeDate
    required property string language
    required property bool hasAudio
    required property string pasteTarget
    required property bool isPinned
    required property bool isTicked
    required property HistoryWorkspaceModel model
    required property var texts
    readonly property bool isFocused: model.focusedRow === index
    /// The keyboard moves the focus of the list.
    property bool isListNavigated: false
    readonly property int tabFocus: isFocused ? Qt.StrongFocus : Qt.NoFocus

    /// The user points at this entry.
    signal tapped
    /// The row is about to go, and with it the button that has the keyboard.
    signal keyboardReturned

    implicitHeight: 86
    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.description: relativeDate
    Accessible.selectable: true
    Accessible.selected: isFocused
    Accessible.onPressAction: tapped()
    // A row kept for the next entry is not drawn, but a screen reader would still find the old one in it.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    Plate {
        anchors.fill: parent
        radius: Metrics.listRowRadius
        material: TolmiPalette.material
        fill: row.isFocused ? TolmiPalette.focusFill : TolmiPalette.subtleFill
        border: row.isFocused ? TolmiPalette.focusStroke : TolmiPalette.chipStroke
    }
    HoverVeil {
        radius: Metrics.listRowRadius
        color: TolmiPalette.subtleFill
        isShown: mouse.containsMouse && !row.isFocused
    }
    FocusRing {
        anchors.margins: 0
        radius: Metrics.listRowRadius
        visible: row.isFocused && row.isListNavigated
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onPressed: row.tapped()
    }
    StudioCheckBox {
        objectName: "tick"
        x: 12
        y: 11
        checked: row.isTicked
        focusPolicy: row.tabFocus
        Accessible.name: row.title
        onToggled: {
            row.model.setTicked(row.entryID, checked);
            checked = Qt.binding(() => row.isTicked);
        }
    }
    StudioText {
        x: 38
        y: 12
        width: date.x - x - 12
        role: Typography.strong
        text: row.title
        Accessible.ignored: true
    }
    StudioText {
        id: date

        x: row.width - 68 - width
        y: 13
        role: Typography.caption
        text: row.relativeDate
        color: TolmiPalette.secondaryText
        Accessible.ignored: true
    }
    StudioText {
        x: 38
        y: 31
        width: row.width - x - 16
        role: Typography.caption
        wrapMode: Text.Wrap
        maximumLineCount: 2
        opacity: 0.85
        text: row.preview
    }
    Row {
        x: 38
        y: 66
        spacing: 6

        StudioText {
            role: Typography.mark
            text: row.language
            color: TolmiPalette.secondaryText
        }
        StudioText {
            role: Typography.mark
            visible: row.hasAudio
            text: "•"
            color: TolmiPalette.tertiaryText
            Accessible.ignored: true
        }
        Symbol {
            objectName: "audioMark"
            anchors.verticalCenter: parent.verticalCenter
            visible: row.hasAudio
            name: "waveform"
            size: 13
            color: TolmiPalette.secondaryText
        }
        StudioText {
            role: Typography.mark
            visible: row.pasteTarget !== ""
            text: "•"
            color: TolmiPalette.tertiaryText
            Accessible.ignored: true
        }
        StudioText {
            role: Typography.mark
            visible: row.pasteTarget !== ""
            width: Math.min(Math.ceil(implicitWidth), row.width - 140)
            text: row.pasteTarget
            color: TolmiPalette.secondaryText
        }
    }
    IconButton {
        objectName: "pin"
        x: row.width - 61
        y: 8
        symbol: row.isPinned ? "pin.fill" : "pin"
        color: row.isPinned ? TolmiPalette.primaryText : TolmiPalette.secondaryText
        focusPolicy: row.tabFocus
        toolTip: row.isPinned ? row.texts.historyUnpin : row.texts.historyPin
        onClicked: row.model.togglePin(row.entryID)
    }
    IconButton {
        objectName: "delete"
        x: row.width - 35
        y: 8
        symbol: "trash"
        focusPolicy: row.tabFocus
        toolTip: row.texts.historyDelete
        onClicked: {
            if (activeFocus)
                row.keyboardReturned();
            row.model.deleteEntry(row.entryID);
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// The entries that the search leaves, the pinned ones first, or what to do while there are none. The arrow keys move the
/// focus, the space bar ticks, the delete key deletes, which a bar below offers to undo.
FocusScope {
    id: control

    required property HistoryWorkspaceModel model
    required property var texts
    /// Of a section's header, whose text stands at its foot.
    readonly property int headerHeight: 34
    readonly property int rowHeight: 86
    property bool isPointedAt: false

    /// Takes the keyboard to the list itself, from whatever in it has it.
    function takeKeyboard(reason: int) {
        place.forceActiveFocus(reason);
    }
    function pageRows(): int {
        return Math.max(1, Math.floor(list.height / (rowHeight + list.spacing)) - 1);
    }
    /// Moves the focus and shows where it went.
    function moveFocus(rows: int) {
        takeKeyboard(Qt.TabFocusReason);
        isPointedAt = false;
        model.moveFocus(rows);
        showFocus();
    }
    function showFocus() {
        list.positionViewAtIndex(model.focusedRow, ListView.Contain);
        if (model.focusedRow === 0)
            list.positionViewAtBeginning();
    }
    function deleteFocused() {
        takeKeyboard(Qt.TabFocusReason);
        isPointedAt = false;
        model.deleteFocusedEntry();
        showFocus();
    }
    function undo() {
        takeKeyboard(Qt.TabFocusReason);
        isPointedAt = false;
        model.undoDeletion();
        showFocus();
    }

    Item {
        id: place

        width: parent.width
        height: parent.height - (undoBar.visible ? undoBar.height + Metrics.listGap : 0)
        focus: true
        activeFocusOnTab: true
        onActiveFocusChanged: control.isPointedAt = false
        Accessible.focusable: true
        Accessible.role: Accessible.List
        Accessible.name: control.texts.routeHistory
        Keys.onUpPressed: control.moveFocus(-1)
        Keys.onDownPressed: control.moveFocus(1)
        Keys.onPressed: event => {
            const steps = ({
                [Qt.Key_Home]: -list.count, [Qt.Key_End]: list.count,
                [Qt.Key_PageUp]: -control.pageRows(), [Qt.Key_PageDown]: control.pageRows()
            })[event.key];
            if (steps !== undefined)
                control.moveFocus(steps);
            else if (event.key !== Qt.Key_Delete && event.key !== Qt.Key_Space)
                return;
            // A held key moves on and on, but neither deletes nor ticks more than once.
            else if (!event.isAutoRepeat && event.key === Qt.Key_Delete)
                control.deleteFocused();
            else if (!event.isAutoRepeat)
                control.model.toggleFocusedTick();
            event.accepted = true;
        }

        ListView {
            id: list

            objectName: "list"
            anchors.fill: parent
            // The first header stands closer to what is above it.
            anchors.topMargin: -8
            model: control.model.rows
            currentIndex: -1
            clip: true
            spacing: Metrics.listGap
            reuseItems: true
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: false
            visible: control.model.hasDisplayedEntries
            section.property: "isPinned"
            section.delegate: Item {
                id: header

                required property string section

                width: list.width
                height: control.headerHeight

                StudioText {
                    x: 4
                    y: 10
                    role: Typography.sectionHeader
                    color: TolmiPalette.secondaryText
                    text: header.section === "true" ? control.texts.historyPinned : control.texts.historyRecent
                    Accessible.role: Accessible.Heading
                }
            }
            delegate: HistoryRow {
                width: list.width
                height: control.rowHeight
                model: control.model
                texts: control.texts
                isListNavigated: place.activeFocus && !control.isPointedAt
                onKeyboardReturned: control.takeKeyboard(Qt.TabFocusReason)
                onTapped: {
                    control.takeKeyboard(Qt.MouseFocusReason);
                    control.isPointedAt = true;
                    control.model.focusEntry(entryID);
                }
            }
            T.ScrollBar.vertical: StudioScrollBar { }
        }
        Column {
            anchors.centerIn: parent
            width: parent.width - 40
            spacing: 6
            visible: !control.model.hasDisplayedEntries

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: control.model.hasEntries ? "magnifyingglass" : "waveform"
                size: 30
                color: TolmiPalette.tertiaryText
            }
            Item {
                width: 1
                height: 4
            }
            StudioText {
                objectName: "emptyTitle"
                width: parent.width
                role: Typography.head
                horizontalAlignment: Text.AlignHCenter
                text: control.model.hasEntries ? control.texts.historyNoResults : control.texts.historyNoTranscriptions
            }
            StudioText {
                objectName: "emptyHint"
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                color: TolmiPalette.secondaryText
                text: control.model.hasEntries ? control.texts.historyNoResultsHint
                                               : control.texts.historyNoTranscriptionsHint
            }
        }
    }
    Item {
        id: undoBar

        objectName: "undoBar"
        y: parent.height - height
        width: parent.width
        height: 44
        visible: control.model.canUndo
        // Whoever had the keyboard in the bar has it in the list, unless it has been taken elsewhere since.
        onVisibleChanged: {
            if (!visible && undo.focus)
                place.focus = true;
        }
        Accessible.role: Accessible.AlertMessage
        Accessible.name: control.model.undoText

        Plate {
            anchors.fill: parent
            radius: Metrics.listRowRadius
            material: TolmiPalette.material
            fill: TolmiPalette.panelFill
            border: TolmiPalette.chipStroke
        }
        StudioText {
            objectName: "undoText"
            anchors.verticalCenter: parent.verticalCenter
            x: 16
            width: undo.x - x - Metrics.besideGap
            text: control.model.undoText
            Accessible.ignored: true
        }
        StudioButton {
            id: undo

            objectName: "undo"
            anchors.verticalCenter: parent.verticalCenter
            x: parent.width - width - 8
            isSmall: true
            tone: StudioButton.Muted
            text: control.model.undoTitle
            onClicked: control.undo()
        }
    }
}

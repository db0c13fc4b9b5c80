import QtQuick
import QtQuick.Templates as T
import Tolmi

/// The entries that the search leaves, the pinned ones first, or what to do while there are none. The arrow keys move the
/// focus, the space bar ticks, the delete key deletes.
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

    Item {
        id: place

        anchors.fill: parent
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
}

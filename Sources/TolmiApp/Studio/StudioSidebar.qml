import QtQuick
import Tolmi

/// The places of the Studio. The arrow keys go from one to the next, and Tab leaves. Where nothing else offers it, the
/// program is ended at the foot.
FocusScope {
    id: sidebar

    required property TolmiStudioWindowModel model
    required property var texts

    function select(index: int) {
        if (index < 0 || index >= rows.count)
            return;
        rows.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
        model.selection = model.destinations[index].name;
    }

    function selectedIndex(): int {
        return model.destinations.findIndex(destination => destination.name === model.selection);
    }

    implicitWidth: Metrics.sidebarWidth

    GradientFill {
        anchors.fill: parent
        topColor: TolmiPalette.ink
        bottomColor: TolmiPalette.graphite
    }
    Divider {
        x: parent.width - 1
        width: 1
        height: parent.height
    }
    Row {
        x: 20
        y: 20
        height: 32
        spacing: 10

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "waveform.circle.fill"
            size: 26
            color: TolmiPalette.frost
            endColor: TolmiPalette.cloud
        }
        StudioText {
            anchors.verticalCenter: parent.verticalCenter
            role: Typography.head
            text: sidebar.texts.appTitle
            Accessible.role: Accessible.Heading
        }
    }
    Column {
        x: 10
        y: 72
        width: parent.width - 20
        spacing: 2
        Accessible.role: Accessible.List
        Accessible.name: sidebar.texts.appTitle
        Keys.onUpPressed: sidebar.select(sidebar.selectedIndex() - 1)
        Keys.onDownPressed: sidebar.select(sidebar.selectedIndex() + 1)
        Keys.onPressed: event => {
            if (event.key !== Qt.Key_Home && event.key !== Qt.Key_End)
                return;
            sidebar.select(event.key === Qt.Key_Home ? 0 : rows.count - 1);
            event.accepted = true;
        }

        Repeater {
            id: rows

            model: sidebar.model.destinations

            SidebarRow {
                required property var modelData

                width: parent.width
                symbol: modelData.symbol
                text: sidebar.texts[modelData.titleKey]
                highlighted: sidebar.model.selection === modelData.name
                // One stop for Tab; the arrow keys do the rest.
                focusPolicy: highlighted || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
                focus: highlighted
                onClicked: sidebar.model.selection = modelData.name
            }
        }
    }
    Loader {
        x: 10
        y: parent.height - height - 10
        width: parent.width - 20
        active: sidebar.model.offersToQuit

        sourceComponent: SidebarRow {
            objectName: "quit"
            symbol: "power"
            text: sidebar.texts.menuBarQuit
            Accessible.role: Accessible.Button
            onClicked: sidebar.model.quit()
        }
    }
}

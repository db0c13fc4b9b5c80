import QtQuick
import Tolmi

/// The workspace that shows whether this machine can dictate right now.
ScrollPage {
    id: view

    required property HealthModel model
    required property var texts

    widthLimit: Metrics.columnWidth
    Component.onCompleted: model.runChecks()

    Column {
        width: parent.width
        spacing: 12

        WorkspaceHeader {
            width: parent.width
            height: implicitHeight + 4
            title: view.texts.healthTitle
            subtitle: view.texts.healthSubtitle

            StudioButton {
                objectName: "run"
                text: view.texts.healthRunChecksAgain
                enabled: !view.model.isRefreshing
                onClicked: view.model.runChecks()
            }
        }
        // The number of rows is constant, so delegates are kept and only their content changes.
        Repeater {
            model: view.model.items.length

            HealthCheckRow {
                required property int index

                width: parent.width
                item: view.model.items[index]
                texts: view.texts
            }
        }
    }
}

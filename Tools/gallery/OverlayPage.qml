import QtQuick
import Tolmi

/// The overlay in all its states, over a dark and over a light window.
Item {
    id: page

    property var models: []

    Repeater {
        model: ["#17181c", "#ffffff"]

        Rectangle {
            id: desktop

            required property color modelData
            required property int index

            y: index * page.height / 2
            width: page.width
            height: page.height / 2
            color: modelData
            clip: true

            Repeater {
                model: 12

                Rectangle {
                    required property int index

                    x: 20 + (index % 3) * 14
                    y: 22 + index * 27
                    width: parent.width - 80 - (index * 53) % 190
                    height: 6
                    radius: 3
                    color: desktop.index === 0 ? "#3a3d46" : "#c4c8d0"
                }
            }
            Grid {
                anchors.centerIn: parent
                columns: 4
                columnSpacing: 40

                Repeater {
                    model: page.models

                    Item {
                        id: sign

                        required property var modelData

                        width: 150
                        height: 150
                        clip: true

                        OverlayContentView { viewModel: sign.modelData }
                    }
                }
            }
        }
    }
}

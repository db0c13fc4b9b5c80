import QtQuick
import Tolmi

/// The settings workspace: three tabs of forms. Edits are applied immediately.
FocusScope {
    id: view

    required property SettingsModel model
    required property var texts

    anchors.fill: parent

    StudioTabBar {
        id: tabs

        objectName: "tabs"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 2 * Metrics.settingsPadding
        focus: true
        onCurrentIndexChanged: page.contentY = 0

        StudioTabButton {
            objectName: "generalTab"
            text: view.texts.settingsGeneral
            symbol: "gear"
        }
        StudioTabButton {
            objectName: "engineTab"
            text: view.texts.settingsEngine
            symbol: "cpu"
        }
        StudioTabButton {
            objectName: "refinementTab"
            text: view.texts.settingsRefinement
            symbol: "sparkles"
        }
    }
    ScrollPage {
        id: page

        objectName: "page"
        anchors.fill: parent
        anchors.margins: Metrics.settingsPadding
        anchors.topMargin: tabs.y + tabs.height
        // The scrolled content extends to the edge of the window.
        anchors.bottomMargin: 0

        Loader {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, Metrics.formWidth)
            sourceComponent: [general, engine, refinement][tabs.currentIndex]
        }
    }
    Component {
        id: general

        GeneralSettingsTab {
            model: view.model
            texts: view.texts
        }
    }
    Component {
        id: engine

        EngineSettingsTab {
            model: view.model
            texts: view.texts
        }
    }
    Component {
        id: refinement

        RefinementSettingsTab {
            model: view.model
            texts: view.texts
        }
    }
}

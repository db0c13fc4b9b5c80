import QtQuick
import Tolmi

/// The gallery's pages, selected in the sidebar.
Window {
    id: gallery

    required property var symbolNames
    required property var overlayModels
    readonly property var pages: ["controls", "stage", "settings", "overlay", "symbols"]
    readonly property var pageSymbols: ["cpu", "waveform.circle", "gearshape", "mic.fill", "sparkles"]
    property string page: "controls"
    property bool isDark: true
    property bool isRomanian: false

    width: 1100
    height: 700
    visible: true
    title: "Tolmi"
    color: TolmiPalette.graphite

    Binding {
        target: TolmiPalette
        property: "scheme"
        value: gallery.isDark ? PaletteColors.Dark : PaletteColors.Light
    }
    AnimatedBackdropView {
        anchors.fill: parent
    }
    Item {
        width: Metrics.sidebarWidth
        height: parent.height

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
                text: "Tolmi Studio"
            }
        }
        Column {
            x: 10
            y: 72
            width: parent.width - 20
            spacing: 2

            Repeater {
                model: gallery.pages

                SidebarRow {
                    required property string modelData
                    required property int index

                    width: parent.width
                    symbol: gallery.pageSymbols[index]
                    text: modelData
                    highlighted: gallery.page === modelData
                    onClicked: gallery.page = modelData
                }
            }
        }
        Row {
            x: 20
            y: parent.height - 40
            spacing: 10

            StudioSwitch {
                label: "Dark"
                checked: gallery.isDark
                onToggled: gallery.isDark = checked
            }
            StudioSwitch {
                label: "Română"
                checked: gallery.isRomanian
                onToggled: gallery.isRomanian = checked
            }
        }
    }
    Loader {
        x: Metrics.sidebarWidth
        width: parent.width - x
        height: parent.height
        sourceComponent: ({ controls: controls, stage: stage, settings: settings, overlay: overlay, symbols: symbols })[gallery.page]
    }
    Component {
        id: controls

        ControlsPage { isRomanian: gallery.isRomanian }
    }
    Component {
        id: stage

        StagePage { isRomanian: gallery.isRomanian }
    }
    Component {
        id: settings

        SettingsPage { isRomanian: gallery.isRomanian }
    }
    Component {
        id: overlay

        OverlayPage { models: gallery.overlayModels }
    }
    Component {
        id: symbols

        SymbolsPage { names: gallery.symbolNames }
    }
}

import QtQuick
import Tolmi

/// The workspace that applies a template to a transcript.
ScrollPage {
    id: view

    required property TemplatesModel model
    required property var texts

    widthLimit: Metrics.columnWidth

    component Panel: GlassPanel {
        default property alias rows: column.data

        width: parent.width
        padding: 14
        cornerRadius: Metrics.panelRadius

        Column {
            id: column

            width: parent.width
            spacing: 10
        }
    }
    component Hint: StudioText {
        width: parent.width
        color: TolmiPalette.secondaryText
        wrapMode: Text.Wrap
    }

    Column {
        width: parent.width
        spacing: Metrics.cardGap

        WorkspaceHeader {
            width: parent.width
            title: view.texts.templatesTitle
            subtitle: view.texts.templatesSubtitle
        }
        Panel {
            PanelHeading {
                width: parent.width
                symbol: "doc.text"
                text: view.texts.templatesSelectedTranscript
            }
            TextBox {
                objectName: "input"
                width: parent.width
                visible: view.model.hasSelectedEntry
                text: view.model.inputText
                maximumLines: 5
                label: view.texts.templatesSelectedTranscript
            }
            Hint {
                objectName: "noTranscript"
                visible: !view.model.hasSelectedEntry
                text: view.texts.templatesNoTranscript
            }
        }
        Panel {
            PanelHeading {
                width: parent.width
                symbol: "wand.and.stars"
                text: view.texts.templatesPreset
            }
            StudioPicker {
                objectName: "preset"
                width: Math.min(parent.width, 260)
                options: view.model.presets
                value: view.model.selectedPresetID
                label: view.texts.templatesPreset
                onPicked: id => view.model.selectedPresetID = id
            }
            Hint {
                objectName: "subtitle"
                text: view.model.presetSubtitle
            }
            StudioButton {
                objectName: "apply"
                text: view.texts.templatesApply
                enabled: view.model.hasSelectedEntry
                onClicked: view.model.applyTemplate()
            }
        }
        Panel {
            PanelHeading {
                width: parent.width
                symbol: "doc.on.doc"
                text: view.texts.templatesPreview

                StudioButton {
                    objectName: "copy"
                    isSmall: true
                    tone: StudioButton.Muted
                    text: view.texts.templatesCopyOutput
                    enabled: view.model.hasPreview
                    onClicked: view.model.copyPreview()
                }
            }
            TextBox {
                objectName: "output"
                width: parent.width
                visible: view.model.hasPreview
                text: view.model.outputText
                label: view.texts.templatesPreview
            }
            Hint {
                objectName: "applyHint"
                visible: !view.model.hasPreview
                text: view.texts.templatesApplyHint
            }
        }
    }
}

import QtQuick
import Tolmi

/// Settings of the refinement by a language model.
Column {
    id: tab

    required property SettingsModel model
    required property var texts
    readonly property bool isOn: model.settings.refinementEnabled

    spacing: 22

    FormSection {
        width: parent.width
        title: tab.texts.settingsLLMSection

        FormRow {
            label: tab.texts.settingsEnableRefinement
            isLast: !tab.isOn

            StudioSwitch {
                objectName: "refinement"
                label: tab.texts.settingsEnableRefinement
                checked: tab.isOn
                onToggled: tab.model.settings.refinementEnabled = checked
            }
        }
        FormTextRow {
            objectName: "endpoint"
            visible: tab.isOn
            label: tab.texts.settingsOllamaEndpoint
            value: tab.model.settings.ollamaEndpoint
            onEdited: newText => tab.model.settings.ollamaEndpoint = newText
        }
        FormTextRow {
            objectName: "model"
            visible: tab.isOn
            label: tab.texts.settingsModel
            value: tab.model.settings.ollamaModel
            onEdited: newText => tab.model.settings.ollamaModel = newText
        }
        FormTextRow {
            objectName: "timeout"
            visible: tab.isOn
            label: tab.texts.settingsTimeoutSeconds
            fieldWidth: 110
            value: tab.model.ollamaTimeoutText
            onEdited: newText => tab.model.ollamaTimeoutText = newText
        }
        Column {
            objectName: "prompt"
            visible: tab.isOn
            width: parent.width
            bottomPadding: 12

            FormRow {
                label: tab.texts.settingsSystemPrompt
                isLast: true

                StudioButton {
                    objectName: "resetPrompt"
                    isSmall: true
                    tone: StudioButton.Muted
                    text: tab.texts.settingsResetToDefault
                    onClicked: tab.model.resetSystemPrompt()
                }
            }
            StudioTextArea {
                objectName: "systemPrompt"
                x: 14
                width: parent.width - 28
                height: 220
                isMonospaced: true
                label: tab.texts.settingsSystemPrompt
                value: tab.model.settings.ollamaSystemPrompt
                onEdited: newText => tab.model.settings.ollamaSystemPrompt = newText
            }
            Item {
                width: 1
                height: 8
            }
            StudioText {
                objectName: "promptHint"
                x: 14
                width: parent.width - 28
                role: Typography.caption
                text: tab.texts.settingsSystemPromptHint
                color: TolmiPalette.tertiaryText
                wrapMode: Text.Wrap
            }
        }
    }
}

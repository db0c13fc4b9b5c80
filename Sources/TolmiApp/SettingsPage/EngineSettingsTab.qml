import QtQuick
import Tolmi

/// Settings of transcription and of the processing sound. Paths are typed and not validated here; the health checks do
/// that.
Column {
    id: tab

    required property SettingsModel model
    required property var texts

    spacing: 22

    FormSection {
        width: parent.width
        title: tab.texts.settingsEngine

        FormRow {
            label: tab.texts.settingsTranscriptionEngine
            isLast: true

            StudioPicker {
                objectName: "transcriptionEngine"
                label: tab.texts.settingsTranscriptionEngine
                options: tab.model.transcriptionEngineOptions
                value: tab.model.transcriptionEngine
                onPicked: newValue => tab.model.transcriptionEngine = newValue
            }
        }
    }
    FormSection {
        width: parent.width
        title: tab.texts.settingsWhisperSection

        FormTextRow {
            objectName: "binaryPath"
            label: tab.texts.settingsBinaryPath
            value: tab.model.settings.whisperBinaryPath
            onEdited: newText => tab.model.settings.whisperBinaryPath = newText
        }
        FormTextRow {
            objectName: "modelPath"
            label: tab.texts.settingsModelPath
            value: tab.model.settings.modelPath
            onEdited: newText => tab.model.settings.modelPath = newText
        }
        FormRow {
            label: tab.texts.settingsPerformanceMode

            StudioPicker {
                objectName: "performanceMode"
                label: tab.texts.settingsPerformanceMode
                options: tab.model.performanceModeOptions
                value: tab.model.performanceMode
                onPicked: newValue => tab.model.performanceMode = newValue
            }
        }
        FormRow {
            label: tab.texts.settingsTransitionSound

            StudioPicker {
                objectName: "transitionSound"
                label: tab.texts.settingsTransitionSound
                options: tab.model.transitionSoundOptions
                value: tab.model.transitionSound
                onPicked: newValue => tab.model.transitionSound = newValue
            }
        }
        FormVolumeRow {
            objectName: "soundVolume"
            label: tab.texts.settingsTransitionSoundVolume
            value: tab.model.settings.processingTransitionSoundVolume
            text: tab.model.volumeText(value)
            onMoved: newValue => tab.model.settings.processingTransitionSoundVolume = newValue
        }
        FormVolumeRow {
            objectName: "previewVolume"
            label: tab.texts.settingsTransitionSoundPreviewVolume
            value: tab.model.settings.processingTransitionPreviewVolume
            text: tab.model.volumeText(value)
            onMoved: newValue => tab.model.settings.processingTransitionPreviewVolume = newValue
        }
        FormRow {
            implicitHeight: 52
            isLast: true

            StudioButton {
                objectName: "preview"
                isSmall: true
                tone: StudioButton.Secondary
                symbol: "speaker.wave.2.fill"
                text: tab.texts.settingsTransitionSoundPreview
                enabled: tab.model.canPreviewTransitionSound
                onClicked: tab.model.previewTransitionSound()
            }
        }
    }
}

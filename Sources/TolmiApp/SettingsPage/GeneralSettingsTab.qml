import QtQuick
import Tolmi

/// Settings of the interface and of the program itself.
Column {
    id: tab

    required property SettingsModel model
    required property var texts

    spacing: 22

    FormSection {
        width: parent.width
        title: tab.texts.settingsAppearanceSection

        FormRow {
            label: tab.texts.settingsAppearance
            isLast: true

            StudioPicker {
                objectName: "appearance"
                label: tab.texts.settingsAppearance
                options: tab.model.appearanceOptions
                value: tab.model.appearance
                onPicked: newValue => tab.model.appearance = newValue
            }
        }
    }
    FormSection {
        width: parent.width
        title: tab.texts.settingsLanguagesSection

        FormRow {
            label: tab.texts.settingsUILanguage

            StudioPicker {
                objectName: "uiLanguage"
                label: tab.texts.settingsUILanguage
                options: tab.model.uiLanguageOptions
                value: tab.model.uiLanguage
                onPicked: newValue => tab.model.uiLanguage = newValue
            }
        }
        FormRow {
            label: tab.texts.settingsTranscriptionLanguage
            isLast: true

            StudioPicker {
                objectName: "transcriptionLanguage"
                label: tab.texts.settingsTranscriptionLanguage
                options: tab.model.transcriptionLanguageOptions
                value: tab.model.settings.language
                onPicked: newValue => tab.model.settings.language = newValue
            }
        }
    }
    FormSection {
        width: parent.width
        title: tab.texts.settingsProfileSection

        FormRow {
            label: tab.texts.settingsProfileManagedInStudio
        }
        FormRow {
            isLast: true

            StudioButton {
                objectName: "openProfile"
                isSmall: true
                tone: StudioButton.Secondary
                text: tab.texts.settingsOpenProfile
                onClicked: tab.model.openProfile()
            }
        }
    }
    FormSection {
        width: parent.width
        title: tab.texts.settingsHotkeySection

        FormRow {
            label: tab.texts.settingsPushToTalk
            isLast: true

            StudioText {
                objectName: "hotkey"
                text: tab.texts.settingsRightOption
                color: TolmiPalette.secondaryText
            }
        }
    }
    FormSection {
        width: parent.width
        title: tab.texts.settingsUpdatesSection

        FormRow {
            label: tab.texts.settingsAutoCheckForUpdates

            StudioSwitch {
                objectName: "automaticUpdates"
                label: tab.texts.settingsAutoCheckForUpdates
                enabled: tab.model.appUpdater.isConfigured
                checked: tab.model.appUpdater.automaticallyChecksForUpdates
                onToggled: tab.model.appUpdater.automaticallyChecksForUpdates = checked
            }
        }
        FormRow {
            isLast: tab.model.appUpdater.isConfigured

            StudioButton {
                objectName: "checkForUpdates"
                isSmall: true
                tone: StudioButton.Secondary
                text: tab.texts.settingsCheckForUpdatesNow
                enabled: tab.model.appUpdater.canCheckForUpdates
                onClicked: tab.model.appUpdater.checkForUpdates()
            }
        }
        FormRow {
            objectName: "updatesHint"
            visible: !tab.model.appUpdater.isConfigured
            hint: tab.texts.settingsUpdatesNotConfiguredHint
            isLast: true
        }
    }
}

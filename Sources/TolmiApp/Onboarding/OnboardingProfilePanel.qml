import QtQuick
import Tolmi

/// The wizard's first step: a name and an avatar.
FocusScope {
    id: panel

    required property OnboardingWizardModel model
    required property var texts

    implicitHeight: column.height

    Column {
        id: column

        width: parent.width
        spacing: 20

        StudioText {
            width: parent.width
            text: panel.texts.onboardingStepProfileHint
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
        Column {
            width: parent.width
            spacing: 6

            StudioText {
                role: Typography.sectionHeader
                text: panel.texts.settingsDisplayName
                color: TolmiPalette.secondaryText
            }
            StudioTextField {
                width: 260
                focus: true
                label: panel.texts.settingsDisplayName
                placeholderText: panel.texts.settingsDisplayNamePlaceholder
                value: panel.model.displayName
                onEdited: newText => panel.model.displayName = newText
                // What is typed takes the place of the name that stands for none.
                onActiveFocusChanged: {
                    if (activeFocus)
                        selectAll();
                }
                onAccepted: {
                    if (panel.model.canAdvance)
                        panel.model.advance();
                }
            }
        }
        Column {
            width: parent.width
            spacing: 6

            StudioText {
                role: Typography.sectionHeader
                text: panel.texts.settingsAvatar
                color: TolmiPalette.secondaryText
            }
            Flow {
                width: parent.width
                spacing: 10

                Item {
                    width: 48
                    height: 48

                    Rectangle {
                        anchors.fill: parent
                        radius: width / 2
                        color: TolmiPalette.chipFill
                        border.color: TolmiPalette.chipStroke
                        antialiasing: true
                    }
                    AvatarView {
                        anchors.centerIn: parent
                        size: panel.model.hasCustomAvatar ? 48 : 30
                        picture: panel.model.profile.picture
                        symbol: panel.model.avatarPreset
                    }
                }
                Item {
                    width: picker.width
                    height: 48

                    StudioPicker {
                        id: picker

                        anchors.verticalCenter: parent.verticalCenter
                        width: 170
                        label: panel.texts.settingsAvatar
                        options: panel.model.avatarPresets
                        value: panel.model.avatarPreset
                        onPicked: newValue => panel.model.avatarPreset = newValue
                    }
                }
                Item {
                    width: buttons.width
                    height: 48
                    visible: panel.model.canImportAvatar

                    Row {
                        id: buttons

                        anchors.verticalCenter: parent.verticalCenter
                        spacing: 10

                        StudioButton {
                            isSmall: true
                            tone: StudioButton.Secondary
                            text: panel.texts.profileUploadAvatar
                            onClicked: panel.model.importAvatar()
                        }
                        StudioButton {
                            isSmall: true
                            tone: StudioButton.Muted
                            text: panel.texts.profileRemoveAvatar
                            visible: panel.model.hasCustomAvatar
                            onClicked: panel.model.removeAvatar()
                        }
                    }
                }
            }
        }
    }
}

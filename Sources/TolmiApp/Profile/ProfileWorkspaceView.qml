import QtQuick
import Tolmi

/// The profile workspace: who the user is, and how far the setting-up has come.
FocusScope {
    id: view

    required property ProfileWorkspaceModel model
    required property var texts
    readonly property bool isWindowActive: Window.active

    anchors.fill: parent
    // Permissions are granted in other programs.
    onIsWindowActiveChanged: {
        if (isWindowActive)
            model.refresh();
    }

    ScrollPage {
        objectName: "page"
        anchors.fill: parent
        widthLimit: Metrics.columnWidth

        Column {
            width: parent.width
            spacing: Metrics.cardGap

            WorkspaceHeader {
                width: parent.width
                title: view.texts.profileTitle
                subtitle: view.texts.profileSubtitle

                StudioButton {
                    objectName: "resumeAtTop"
                    visible: view.model.showsOnboardingReminder
                    text: view.texts.profileResumeOnboarding
                    onClicked: view.model.resumeOnboarding()
                }
            }
            ProfileCard {
                objectName: "identity"
                title: view.texts.profileIdentitySection

                Item {
                    width: parent.width
                    height: 30

                    StudioText {
                        id: nameLabel

                        anchors.verticalCenter: parent.verticalCenter
                        text: view.texts.settingsDisplayName
                    }
                    StudioTextField {
                        objectName: "displayName"
                        x: nameLabel.width + 12
                        width: 260
                        focus: true
                        label: view.texts.settingsDisplayName
                        placeholderText: view.texts.settingsDisplayNamePlaceholder
                        value: view.model.displayName
                        onEdited: newText => view.model.displayName = newText
                    }
                }
                StudioText {
                    width: parent.width
                    role: Typography.caption
                    text: view.texts.profileIdentityHint
                    color: TolmiPalette.tertiaryText
                    wrapMode: Text.Wrap
                }
            }
            ProfileCard {
                objectName: "avatar"
                title: view.texts.profileAvatarSection
                hint: view.texts.profileAvatarHint

                Flow {
                    width: parent.width
                    spacing: 12

                    Rectangle {
                        width: 56
                        height: 56
                        radius: 28
                        color: TolmiPalette.chipFill
                        border.color: TolmiPalette.chipStroke
                        Accessible.role: Accessible.Graphic
                        Accessible.name: view.texts.settingsAvatar

                        AvatarView {
                            objectName: "preview"
                            anchors.fill: parent
                            anchors.margins: 1
                            size: 24
                            picture: view.model.profile.picture
                            symbol: view.model.avatarPreset
                        }
                    }
                    Row {
                        height: 56
                        spacing: 12

                        StudioText {
                            anchors.verticalCenter: parent.verticalCenter
                            text: view.texts.settingsAvatar
                        }
                        StudioPicker {
                            objectName: "preset"
                            anchors.verticalCenter: parent.verticalCenter
                            label: view.texts.settingsAvatar
                            options: view.model.avatarPresets
                            value: view.model.avatarPreset
                            onPicked: newValue => view.model.avatarPreset = newValue
                        }
                    }
                    Row {
                        height: 56
                        spacing: 8

                        StudioButton {
                            objectName: "upload"
                            anchors.verticalCenter: parent.verticalCenter
                            tone: StudioButton.Secondary
                            text: view.texts.profileUploadAvatar
                            onClicked: view.model.importAvatar()
                        }
                        StudioButton {
                            objectName: "remove"
                            anchors.verticalCenter: parent.verticalCenter
                            tone: StudioButton.Muted
                            visible: view.model.hasCustomAvatar
                            text: view.texts.profileRemoveAvatar
                            onClicked: view.model.removeAvatar()
                        }
                    }
                }
            }
            ProfileCard {
                objectName: "checklist"
                title: view.texts.profileChecklistTitle
                caption: view.model.onboardingProgressText

                ProfileChecklistRow {
                    objectName: "profileStep"
                    text: view.texts.onboardingStepProfileTitle
                    isComplete: view.model.profileStepComplete
                }
                ProfileChecklistRow {
                    objectName: "permissionsStep"
                    text: view.texts.onboardingStepPermissionsTitle
                    isComplete: view.model.permissionsStepComplete
                }
                ProfileChecklistRow {
                    objectName: "dictationStep"
                    text: view.texts.onboardingStepDictationTitle
                    isComplete: view.model.dictationStepComplete
                }
                StudioButton {
                    objectName: "resumeInChecklist"
                    tone: StudioButton.Secondary
                    visible: view.model.showsOnboardingReminder
                    text: view.texts.profileResumeOnboarding
                    onClicked: view.model.resumeOnboarding()
                }
            }
            ProfileCard {
                objectName: "healthScore"
                title: view.texts.profileHealthScoreTitle

                StudioText {
                    objectName: "score"
                    height: 24
                    font: Typography.face(Typography.displayFamily, 18, Font.DemiBold, 0)
                    text: view.model.scoreText
                }
                StudioText {
                    objectName: "readyMessage"
                    width: parent.width
                    visible: view.model.recommendations.length === 0
                    text: view.texts.profileHealthReadyMessage
                    color: TolmiPalette.secondaryText
                    wrapMode: Text.Wrap
                }
                StudioText {
                    objectName: "recommendationsTitle"
                    role: Typography.strong
                    visible: view.model.recommendations.length > 0
                    text: view.texts.profileHealthRecommendations
                    Accessible.role: Accessible.Heading
                }
                Repeater {
                    id: recommendations

                    objectName: "recommendations"
                    model: view.model.recommendations

                    ProfileListRow {
                        required property string modelData

                        symbol: "arrow.right.circle.fill"
                        text: modelData
                    }
                }
            }
        }
    }
    StudioDialog {
        objectName: "avatarError"
        title: view.texts.profileAvatarErrorTitle
        message: view.model.avatarErrorMessage
        confirmText: view.texts.commonOK
        visible: view.model.avatarErrorMessage !== ""
        onClosed: view.model.dismissAvatarError()
    }
}

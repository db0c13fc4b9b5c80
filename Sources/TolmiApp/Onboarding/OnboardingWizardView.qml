import QtQuick
import QtQuick.Templates as T
import Tolmi

/// The wizard of the first start, to lie over the Studio on a sheet.
FocusScope {
    id: wizard

    required property OnboardingWizardModel model
    required property var texts

    implicitWidth: 680
    implicitHeight: 540
    focus: true

    AnimatedBackdropView {
        anchors.fill: parent
        cornerRadius: Metrics.dialogRadius
    }
    Item {
        id: header

        x: Metrics.workspacePadding
        y: Metrics.workspacePadding
        width: parent.width - 2 * x
        height: subtitle.y + subtitle.height

        StudioText {
            width: Math.min(Math.ceil(implicitWidth), skip.x - 12)
            role: Typography.sheetTitle
            text: wizard.texts.onboardingTitle
            Accessible.role: Accessible.Heading
        }
        StudioText {
            id: subtitle

            y: 30
            width: Math.min(Math.ceil(implicitWidth), skip.x - 12)
            text: wizard.texts.onboardingSubtitle
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
        StudioButton {
            id: skip

            x: parent.width - width
            tone: StudioButton.Muted
            text: wizard.texts.onboardingSkip
            onClicked: wizard.model.skip()
        }
    }
    OnboardingProgress {
        id: progress

        x: Metrics.workspacePadding
        y: header.y + header.height + 16
        width: parent.width - 2 * x
        titles: [wizard.texts.onboardingStepProfileTitle, wizard.texts.onboardingStepPermissionsTitle,
            wizard.texts.onboardingStepDictationTitle]
        symbols: wizard.model.stepSymbols
        done: wizard.model.stepsDone
        nameOfDone: title => wizard.texts.labelled(title, wizard.texts.stateDone)
        currentIndex: wizard.model.currentStepIndex
    }
    GlassPanel {
        x: Metrics.workspacePadding
        y: progress.y + progress.height + 16
        width: parent.width - 2 * x
        height: footer.y - 16 - y
        padding: Metrics.cardPadding

        Flickable {
            anchors.fill: parent
            contentHeight: panel.height
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height
            clip: interactive
            T.ScrollBar.vertical: StudioScrollBar { }

            Loader {
                id: panel

                width: parent.width
                focus: true
                sourceComponent: [profilePanel, permissionsPanel, dictationPanel][wizard.model.currentStepIndex]
                // The keyboard stays in the wizard when the button that had it has no more to do.
                onLoaded: item.forceActiveFocus()
            }
        }
    }
    Item {
        id: footer

        x: Metrics.workspacePadding
        y: parent.height - Metrics.workspacePadding - height
        width: parent.width - 2 * x
        height: forward.height

        StudioButton {
            tone: StudioButton.Secondary
            text: wizard.texts.onboardingBack
            enabled: wizard.model.currentStepIndex > 0
            onClicked: wizard.model.goBack()
        }
        StudioButton {
            id: forward

            x: parent.width - width
            text: wizard.model.continueButtonTitle
            enabled: wizard.model.canAdvance
            onClicked: wizard.model.advance()
        }
    }
    Component {
        id: profilePanel

        OnboardingProfilePanel {
            model: wizard.model
            texts: wizard.texts
        }
    }
    Component {
        id: permissionsPanel

        OnboardingPermissionsPanel {
            model: wizard.model
            texts: wizard.texts
        }
    }
    Component {
        id: dictationPanel

        OnboardingDictationPanel {
            model: wizard.model
            texts: wizard.texts
        }
    }
    StudioDialog {
        title: wizard.texts.profileAvatarErrorTitle
        message: wizard.model.avatarErrorMessage
        confirmText: wizard.texts.commonOK
        visible: wizard.model.avatarErrorMessage !== ""
        onClosed: wizard.model.dismissAvatarError()
    }
}

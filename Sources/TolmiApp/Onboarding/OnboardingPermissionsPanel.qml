import QtQuick
import Tolmi

/// The wizard's second step: the rights that a dictation needs.
FocusScope {
    id: panel

    required property OnboardingWizardModel model
    required property var texts

    implicitHeight: column.height

    component PermissionRow: Item {
        id: row

        property string title
        property bool isComplete
        property string actionTitle
        /// Why it is missing and what to do; empty when there is nothing to say.
        property string problem

        signal action()

        width: parent.width
        height: Math.max(36, words.height)
        Accessible.role: Accessible.ListItem
        Accessible.name: panel.texts.labelled(title, isComplete ? panel.texts.healthGranted
                                                                : panel.texts.healthAccessibilityMissing)
        Accessible.description: problem
        Accessible.checkable: true
        Accessible.checked: isComplete

        Symbol {
            y: 9
            name: row.isComplete ? "checkmark.circle.fill" : "xmark.octagon.fill"
            size: 18
            color: row.isComplete ? TolmiPalette.frost : TolmiPalette.smoke
        }
        Column {
            id: words

            x: 28
            width: (grant.visible ? grant.x - 12 : parent.width) - x
            topPadding: 9
            spacing: 2

            StudioText {
                width: Math.min(Math.ceil(implicitWidth), parent.width)
                role: Typography.strong
                text: row.title
                Accessible.ignored: true
            }
            StudioText {
                width: parent.width
                role: Typography.caption
                text: row.problem
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
                visible: text !== ""
                Accessible.ignored: true
            }
        }
        StudioButton {
            id: grant

            x: parent.width - width
            tone: StudioButton.Secondary
            text: row.actionTitle
            visible: !row.isComplete
            onClicked: row.action()
        }
    }

    Column {
        id: column

        width: parent.width
        spacing: 16

        StudioText {
            width: parent.width
            text: panel.texts.onboardingStepPermissionsHint
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
        PermissionRow {
            title: panel.texts.healthMicrophone
            isComplete: panel.model.microphoneGranted
            actionTitle: panel.texts.onboardingGrantMicrophone
            problem: panel.model.microphoneProblem
            onAction: panel.model.grantMicrophone()
        }
        PermissionRow {
            title: panel.texts.healthAccessibility
            isComplete: panel.model.accessibilityGranted
            actionTitle: panel.texts.onboardingGrantAccessibility
            problem: panel.model.accessibilityProblem
            onAction: panel.model.grantAccessibility()
        }
    }
}

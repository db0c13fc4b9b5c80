import QtQuick
import Tolmi

/// The wizard's third step: a dictation.
FocusScope {
    id: panel

    required property OnboardingWizardModel model
    required property var texts

    implicitHeight: column.height

    Column {
        id: column

        width: parent.width
        spacing: 12

        StudioText {
            width: parent.width
            text: panel.texts.onboardingStepDictationHint
            color: TolmiPalette.secondaryText
            wrapMode: Text.Wrap
        }
        Row {
            width: parent.width
            spacing: 14

            DictationButton {
                id: button

                focus: true
                dictation: panel.model.dictation
                onClicked: panel.model.runDictationAction()
            }
            StudioText {
                anchors.verticalCenter: button.verticalCenter
                width: Math.min(Math.ceil(implicitWidth), parent.width - button.width - 14)
                text: panel.model.dictation.stateLabel
                color: TolmiPalette.secondaryText
            }
        }
        Row {
            width: parent.width
            spacing: 8

            Symbol {
                y: -1
                name: panel.model.dictationTestCompleted ? "checkmark.circle.fill" : "circle"
                size: 18
                color: panel.model.dictationTestCompleted ? TolmiPalette.frost : TolmiPalette.tertiaryText
            }
            StudioText {
                width: parent.width - 26
                text: panel.model.dictationTestCompleted ? panel.texts.onboardingDictationDone
                                                         : panel.texts.onboardingDictationPending
                color: panel.model.dictationTestCompleted ? TolmiPalette.frost : TolmiPalette.secondaryText
                wrapMode: Text.Wrap
            }
        }
        Column {
            width: parent.width
            spacing: 6

            Repeater {
                model: panel.model.dictationTestCompleted ? [] : panel.model.dictationProblems

                Row {
                    id: problem

                    required property string modelData

                    width: parent.width
                    spacing: 8

                    Symbol {
                        y: -1
                        name: "exclamationmark.triangle.fill"
                        size: 18
                        color: TolmiPalette.primaryText
                    }
                    StudioText {
                        width: parent.width - 26
                        text: problem.modelData
                        wrapMode: Text.Wrap
                    }
                }
            }
        }
    }
}

import QtQuick
import Tolmi

/// The start page: the dictation, and the ways into the other workspaces.
ScrollPage {
    id: page

    required property CommandCenterModel model
    required property var texts
    /// Whether three cards fit beside each other with their words unbroken.
    readonly property bool isWide: width >= 800

    Column {
        width: parent.width
        spacing: Metrics.cardGap

        Item {
            width: parent.width
            height: subtitle.y + subtitle.height

            StudioText {
                width: Math.min(Math.ceil(implicitWidth), chip.x - 12)
                role: Typography.title
                text: page.texts.commandCenterTitle
                Accessible.role: Accessible.Heading
            }
            StudioText {
                id: subtitle

                y: 36
                width: Math.min(Math.ceil(implicitWidth), chip.x - 12)
                text: page.texts.commandCenterSubtitle
                color: TolmiPalette.secondaryText
                wrapMode: Text.Wrap
            }
            ProfileChip {
                id: chip

                x: parent.width - width
                y: 2
                picture: page.model.profile.picture
                symbol: page.model.profile.symbol
                text: page.model.profile.displayName
                onClicked: page.model.openProfile()
            }
        }
        GlassPanel {
            id: reminder

            readonly property bool hasRoomForButton: resume.width + 420 < width

            width: parent.width
            height: (hasRoomForButton ? reminderTexts.height : resume.y + resume.height) + 2 * padding
            padding: Metrics.cardPadding
            visible: page.model.showsOnboardingReminder

            Symbol {
                y: Math.round((reminderTexts.height - height) / 2)
                name: "sparkles.rectangle.stack"
                size: 22
                color: TolmiPalette.primaryText
            }
            Column {
                id: reminderTexts

                x: 38
                width: (reminder.hasRoomForButton ? resume.x - 12 : parent.width) - x
                spacing: 4
                topPadding: 1
                bottomPadding: 1

                Row {
                    width: parent.width
                    spacing: 10

                    StudioText {
                        id: reminderTitle

                        role: Typography.head
                        text: page.texts.commandCenterOnboardingReminderTitle
                    }
                    StudioText {
                        anchors.verticalCenter: reminderTitle.verticalCenter
                        width: Math.min(Math.ceil(implicitWidth), parent.width - reminderTitle.width - 10)
                        role: Typography.caption
                        text: page.model.onboardingProgress
                        color: TolmiPalette.secondaryText
                    }
                }
                StudioText {
                    width: parent.width
                    text: page.texts.commandCenterOnboardingReminderHint
                    color: TolmiPalette.secondaryText
                    wrapMode: Text.Wrap
                }
            }
            StudioButton {
                id: resume

                x: reminder.hasRoomForButton ? parent.width - width : 38
                y: reminder.hasRoomForButton ? Math.round((reminderTexts.height - height) / 2)
                                             : reminderTexts.height + 12
                tone: StudioButton.Secondary
                text: page.texts.commandCenterOnboardingContinue
                onClicked: page.model.resumeOnboarding()
            }
        }
        GlassPanel {
            id: dictationCard

            readonly property bool hasRoomForWave: width >= 700

            width: parent.width
            height: 24 + 14 + Math.max(40, dictationTexts.height) + 26 + 36 + 2 * padding
            padding: Metrics.cardPadding

            Row {
                height: 24
                spacing: 9

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "waveform.circle"
                    size: 20
                    color: TolmiPalette.primaryText
                }
                StudioText {
                    anchors.verticalCenter: parent.verticalCenter
                    role: Typography.head
                    text: page.texts.commandCenterDictation
                    rightPadding: 12
                }
                StatusPill {
                    icon: page.model.dictation.stateIcon
                    text: page.model.dictation.stateLabel
                    tone: page.model.dictation.stateTone
                }
            }
            Column {
                id: dictationTexts

                y: 38
                width: (dictationCard.hasRoomForWave ? wave.x - 24 : parent.width)
                spacing: 4

                StudioText {
                    width: parent.width
                    text: page.texts.commandCenterDictationHint
                    color: TolmiPalette.secondaryText
                    wrapMode: Text.Wrap
                }
                StudioText {
                    width: parent.width
                    text: page.model.dictation.errorMessage
                    wrapMode: Text.Wrap
                    visible: text !== ""
                }
            }
            SignalWaveView {
                id: wave

                x: parent.width - width - 8
                y: Math.round((parent.height - height) / 2)
                visible: dictationCard.hasRoomForWave
                bars: 44
                spacing: 5
                tint: TolmiPalette.frost
                isActive: visible && page.model.dictation.isRecording
                level: isActive ? page.model.dictation.audioLevel : 0
            }
            Flow {
                y: parent.height - height
                width: parent.width
                spacing: 10

                DictationButton {
                    dictation: page.model.dictation
                    onClicked: page.model.dictation.runAction()
                }
                StudioButton {
                    tone: StudioButton.Secondary
                    text: page.texts.commandCenterOpenDictationLive
                    onClicked: page.model.openDictationLive()
                }
            }
        }
        Grid {
            id: cards

            readonly property real cardWidth: page.isWide ? Math.floor((width - 2 * spacing) / 3) : width
            readonly property real tallest: Math.max(historyCard.implicitHeight, templatesCard.implicitHeight,
                                                     healthCard.implicitHeight)

            width: parent.width
            columns: page.isWide ? 3 : 1
            spacing: Metrics.cardGap

            StudioCard {
                id: historyCard

                width: cards.cardWidth
                height: page.isWide ? cards.tallest : implicitHeight
                symbol: "clock.arrow.circlepath"
                title: page.texts.commandCenterHistory
                caption: page.model.historyCount
                hint: page.model.historyHint
                note: page.model.lastDestination
                buttonText: page.texts.commandCenterOpenHistory
                onPressed: page.model.openHistory()
            }
            StudioCard {
                id: templatesCard

                width: cards.cardWidth
                height: page.isWide ? cards.tallest : implicitHeight
                symbol: "wand.and.stars"
                title: page.texts.commandCenterTemplates
                caption: page.texts.commandCenterPresetOnly
                hint: page.texts.commandCenterTemplatesHint
                buttonText: page.texts.commandCenterOpenTemplates
                onPressed: page.model.openTemplates()
            }
            StudioCard {
                id: healthCard

                // The last one takes what the division left.
                width: page.isWide ? cards.width - 2 * (cards.cardWidth + cards.spacing) : cards.cardWidth
                height: page.isWide ? cards.tallest : implicitHeight
                symbol: "stethoscope"
                title: page.texts.commandCenterHealth
                caption: page.texts.commandCenterRuntimeChecks
                hint: page.texts.commandCenterHealthHint
                buttonText: page.texts.commandCenterRunHealthChecks
                onPressed: page.model.openHealth()
            }
        }
    }
}

import QtQuick
import Tolmi

/// The start page: the dictation, and links to the other workspaces.
ScrollPage {
    id: page

    required property CommandCenterModel model
    required property var texts
    /// Whether three cards fit side by side without breaking words.
    readonly property bool isWide: width >= 800

    Column {
        width: parent.width
        spacing: Metrics.cardGap

        Item {
            width: parent.width
            height: words.height

            Column {
                id: words

                anchors.left: parent.left
                anchors.right: chip.left
                anchors.rightMargin: Metrics.besideGap
                spacing: Metrics.wordsGap

                StudioText {
                    width: parent.width
                    role: Typography.title
                    text: page.texts.commandCenterTitle
                    Accessible.role: Accessible.Heading
                }
                StudioText {
                    width: parent.width
                    text: page.texts.commandCenterSubtitle
                    color: TolmiPalette.secondaryText
                    wrapMode: Text.Wrap
                }
            }
            ProfileChip {
                id: chip

                anchors.right: parent.right
                y: 2
                picture: page.model.profile.picture
                symbol: page.model.profile.symbol
                text: page.model.profile.displayName
                onClicked: page.model.openProfile()
            }
        }
        GlassPanel {
            id: reminder

            /// Whether the button fits beside the text; otherwise it is below.
            readonly property bool hasRoomForButton: width - resume.width > 420

            width: parent.width
            padding: Metrics.cardPadding
            visible: page.model.showsOnboardingReminder

            Symbol {
                id: sparkles

                anchors.verticalCenter: reminderTexts.verticalCenter
                name: "sparkles.rectangle.stack"
                size: 22
                color: TolmiPalette.primaryText
            }
            Column {
                id: reminderTexts

                anchors.left: sparkles.right
                anchors.leftMargin: Metrics.cardPadding
                anchors.right: reminder.hasRoomForButton ? resume.left : parent.right
                anchors.rightMargin: reminder.hasRoomForButton ? Metrics.besideGap : 0
                spacing: Metrics.wordsGap
                topPadding: 1
                bottomPadding: 1

                Row {
                    width: parent.width
                    spacing: Metrics.buttonGap

                    StudioText {
                        id: reminderTitle

                        role: Typography.head
                        text: page.texts.commandCenterOnboardingReminderTitle
                    }
                    StudioText {
                        anchors.verticalCenter: reminderTitle.verticalCenter
                        width: Math.min(Math.ceil(implicitWidth), parent.width - x)
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

                x: reminder.hasRoomForButton ? parent.width - width : reminderTexts.x
                y: reminder.hasRoomForButton ? Math.round((reminderTexts.height - height) / 2)
                                             : reminderTexts.height + Metrics.besideGap
                tone: StudioButton.Secondary
                text: page.texts.commandCenterOnboardingContinue
                onClicked: page.model.resumeOnboarding()
            }
        }
        GlassPanel {
            id: dictationCard

            readonly property bool hasRoomForWave: width >= 700

            width: parent.width
            padding: Metrics.cardPadding

            Column {
                id: dictationParts

                width: parent.width
                spacing: 26

                Column {
                    width: dictationCard.hasRoomForWave ? wave.x - 24 : parent.width
                    spacing: Metrics.headingGap

                    Row {
                        spacing: Metrics.symbolGap

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
                            rightPadding: Metrics.besideGap
                        }
                        StatusPill {
                            icon: page.model.dictation.stateIcon
                            text: page.model.dictation.stateLabel
                            tone: page.model.dictation.stateTone
                        }
                    }
                    Column {
                        width: parent.width
                        // Keeps the buttons in place whether the text has one line or two.
                        height: Math.max(implicitHeight, 2 * Typography.body.lineHeight)
                        spacing: Metrics.wordsGap

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
                }
                Flow {
                    width: parent.width
                    spacing: Metrics.buttonGap

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
            SignalWaveView {
                id: wave

                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: dictationParts.verticalCenter
                visible: dictationCard.hasRoomForWave
                bars: 44
                spacing: 5
                tint: TolmiPalette.frost
                isActive: visible && page.model.dictation.isRecording
                level: isActive ? page.model.dictation.audioLevel : 0
            }
        }
        Grid {
            id: cards

            readonly property real gaps: (columns - 1) * spacing
            readonly property real cardWidth: Math.floor((width - gaps) / columns)
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

                // The last card takes the remainder of the division.
                width: cards.width - cards.gaps - (cards.columns - 1) * cards.cardWidth
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

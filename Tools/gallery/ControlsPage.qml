import QtQuick
import Tolmi

/// Every control, normal and disabled, and the small decorations.
Item {
    id: page

    property bool isRomanian: false
    readonly property var languages: [
        { value: "ro", text: isRomanian ? "Romana" : "Romanian" },
        { value: "en", text: isRomanian ? "Engleza" : "English" },
        { value: "auto", text: isRomanian ? "Detectare automata" : "Auto-detect" }
    ]

    component Caption: StudioText {
        role: Typography.mark
        color: TolmiPalette.tertiaryText
        width: 74
    }

    StudioText {
        x: 20
        y: 20
        role: Typography.title
        text: page.isRomanian ? "Controale" : "Controls"
    }
    Column {
        x: 20
        y: 72
        spacing: 14

        Repeater {
            model: ["primary", "secondary", "muted", "danger"]

            Row {
                id: tone

                required property string modelData
                required property int index

                spacing: 12

                Caption {
                    height: 36
                    text: tone.modelData
                }
                StudioButton {
                    tone: tone.index
                    text: page.isRomanian ? "Continuă" : "Continue"
                }
                StudioButton {
                    tone: tone.index
                    symbol: "mic.fill"
                    text: page.isRomanian ? "Pornește" : "Start"
                    focus: tone.index === 0
                    Component.onCompleted: {
                        if (tone.index === 0)
                            forceActiveFocus(Qt.TabFocusReason);
                    }
                }
                StudioButton {
                    tone: tone.index
                    isSmall: true
                    symbol: "doc.on.doc"
                    text: page.isRomanian ? "Copiază" : "Copy"
                    anchors.verticalCenter: parent.verticalCenter
                }
                StudioButton {
                    tone: tone.index
                    enabled: false
                    text: page.isRomanian ? "Continuă" : "Continue"
                }
            }
        }
        Row {
            spacing: 12

            Caption {
                height: 28
                text: "picker"
            }
            StudioPicker {
                options: page.languages
                value: "en"
                label: "Language"
            }
            StudioPicker {
                options: page.languages
                value: "auto"
                label: "Language that cannot be changed"
                enabled: false
            }
        }
        Row {
            spacing: 12

            Caption {
                height: 30
                text: "field"
            }
            StudioTextField {
                width: 150
                placeholderText: page.isRomanian ? "Numele tău" : "Your name"
            }
            StudioTextField {
                width: 200
                label: "Path"
                value: "/usr/local/bin/whisper-cli"
                isMonospaced: true
            }
            StudioTextField {
                width: 120
                label: "Name that cannot be changed"
                value: "Ana"
                enabled: false
            }
        }
        Row {
            spacing: 12

            Caption {
                height: 20
                text: "switch"
            }
            StudioSwitch {
                label: "On"
                checked: true
            }
            StudioSwitch { label: "Off" }
            StudioSwitch {
                label: "On for ever"
                checked: true
                enabled: false
            }
            StudioSlider {
                label: "Volume"
                value: 0.45
            }
            StudioSlider {
                label: "Volume that cannot be changed"
                value: 0.45
                width: 90
                enabled: false
            }
        }
        Row {
            spacing: 14

            Caption {
                height: 20
                text: "check box"
            }
            StudioCheckBox {
                Accessible.name: "Ticked"
                checked: true
            }
            StudioCheckBox { Accessible.name: "Not ticked" }
            StudioCheckBox {
                Accessible.name: "Ticked for ever"
                checked: true
                enabled: false
            }
            StudioCheckBox {
                checked: true
                text: page.isRomanian ? "Cu text" : "With a text"
            }
            IconButton {
                symbol: "pin.fill"
                toolTip: "Pin"
            }
            IconButton {
                symbol: "trash"
                toolTip: "Delete"
            }
        }
        Row {
            spacing: 10

            Caption {
                height: 24
                text: "pills"
            }
            StatusPill {
                icon: "hourglass"
                text: page.isRomanian ? "Transcriere" : "Transcribing"
            }
            StatusPill {
                icon: "checkmark.seal.fill"
                text: page.isRomanian ? "Gata" : "Ready"
                tone: StatusPill.Success
            }
            StatusPill {
                icon: "waveform.circle.fill"
                text: page.isRomanian ? "Inregistrare" : "Recording"
                tone: StatusPill.Accent
            }
            StatusPill {
                icon: "exclamationmark.triangle.fill"
                text: page.isRomanian ? "Eroare" : "Error"
                tone: StatusPill.Danger
            }
        }
        Row {
            spacing: 10

            Caption {
                height: 24
                text: "chips"
            }
            KeyCap {
                anchors.verticalCenter: parent.verticalCenter
                text: "Right Alt"
            }
            ProfileChip {
                isSmall: true
                anchors.verticalCenter: parent.verticalCenter
                text: page.isRomanian ? "Ioana Marinescu" : "Andrew Cole"
            }
            ProfileChip { text: page.isRomanian ? "Ioana Marinescu" : "Andrew Cole" }
            Spinner { anchors.verticalCenter: parent.verticalCenter }
            IconButton {
                symbol: "trash"
                toolTip: "Clear everything"
                anchors.verticalCenter: parent.verticalCenter
                onClicked: dialog.open()
            }
        }
        Row {
            spacing: 10

            Caption {
                height: 36
                text: "tabs"
            }
            StudioTabBar {
                currentIndex: 1

                StudioTabButton {
                    symbol: "gear"
                    text: "General"
                }
                StudioTabButton {
                    symbol: "cpu"
                    text: page.isRomanian ? "Motor" : "Engine"
                }
                StudioTabButton {
                    symbol: "sparkles"
                    text: page.isRomanian ? "Rafinare" : "Refinement"
                }
            }
        }
    }
    Item {
        x: 540
        y: 72
        width: 310
        height: 190

        MenuPlate {
            anchors.fill: parent
            cornerRadius: Metrics.dialogRadius
            isDialog: true
        }
        Column {
            x: 20
            y: 20
            width: 270
            spacing: 6

            Symbol {
                name: "exclamationmark.triangle.fill"
                size: 26
                color: TolmiPalette.primaryText
            }
            StudioText {
                width: parent.width
                role: Typography.head
                text: page.isRomanian ? "Ștergi tot istoricul?" : "Clear all transcription history?"
            }
            StudioText {
                width: parent.width
                wrapMode: Text.Wrap
                color: TolmiPalette.secondaryText
                text: page.isRomanian ? "Toate transcrierile salvate vor fi șterse definitiv."
                                      : "This will permanently remove every saved transcription."
            }
            Row {
                anchors.right: parent.right
                spacing: 8

                StudioButton {
                    tone: StudioButton.Muted
                    text: page.isRomanian ? "Anulează" : "Cancel"
                }
                StudioButton {
                    tone: StudioButton.Danger
                    text: page.isRomanian ? "Șterge tot" : "Clear All"
                }
            }
        }
    }
    Item {
        x: 540
        y: 290
        width: 190
        height: 102

        MenuPlate { anchors.fill: parent }
        Column {
            x: 6
            y: 6
            width: parent.width - 12

            Repeater {
                model: page.languages

                MenuRow {
                    required property var modelData
                    required property int index

                    width: parent.width
                    text: modelData.text
                    isChecked: index === 1
                    isHighlighted: index === 2
                }
            }
        }
    }
    StudioDialog {
        id: dialog

        title: page.isRomanian ? "Ștergi tot?" : "Clear everything?"
        confirmTone: StudioButton.Danger
        confirmText: page.isRomanian ? "Șterge" : "Clear"
        cancelText: page.isRomanian ? "Nu" : "Keep"
    }
    TextBox {
        x: 540
        y: 420
        width: 310
        label: "Text to read"
        text: page.isRomanian ? "Ședința de mâine se mută la ora zece, în sala mare. Aduceți, vă rog, situația bugetului."
                              : "Please move the design review to Thursday at ten and tell everyone on the team."
    }
    StudioTextArea {
        x: 540
        y: 510
        width: 310
        height: 90
        isMonospaced: true
        label: "System prompt"
        value: "You correct dictated text.\nAnswer with the text alone."
    }
    PremiumTextFieldRow {
        x: 540
        y: 616
        title: page.isRomanian ? "Caută" : "Search"
        icon: "magnifyingglass"
        placeholder: page.isRomanian ? "Orice" : "Anything"
    }
}

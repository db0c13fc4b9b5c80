import QtQuick
import Tolmi

/// A form.
Item {
    id: page

    property bool isRomanian: false
    property real volume: 0.35

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 20
        width: Metrics.formWidth
        spacing: 22

        FormSection {
            width: parent.width
            title: page.isRomanian ? "Motor" : "Engine"

            FormRow {
                label: page.isRomanian ? "Motor de transcriere" : "Transcription engine"
                isLast: true

                StudioPicker {
                    label: page.isRomanian ? "Motor de transcriere" : "Transcription engine"
                    options: [{ value: 0, text: "whisper.cpp (CLI, local)" }]
                    value: 0
                }
            }
        }
        FormSection {
            width: parent.width
            title: "whisper.cpp"

            FormRow {
                label: page.isRomanian ? "Cale binar" : "Binary path"

                StudioTextField {
                    width: 400
                    isMonospaced: true
                    label: page.isRomanian ? "Cale binar" : "Binary path"
                    value: "/usr/local/bin/whisper-cli"
                    Component.onCompleted: forceActiveFocus()
                }
            }
            FormRow {
                label: page.isRomanian ? "Cale model" : "Model path"

                StudioTextField {
                    width: 400
                    isMonospaced: true
                    label: page.isRomanian ? "Cale model" : "Model path"
                    value: "~/.local/share/tolmi/models/ggml-small.bin"
                }
            }
            FormRow {
                label: page.isRomanian ? "Sunet tranzitie" : "Transition sound"

                StudioPicker {
                    label: page.isRomanian ? "Sunet tranzitie" : "Transition sound"
                    options: [{ value: "submarine", text: "Submarine" }, { value: "none", text: "None" }]
                    value: "submarine"
                }
            }
            FormRow {
                label: page.isRomanian ? "Volum procesare" : "Processing volume"

                Row {
                    spacing: 8

                    StudioSlider {
                        label: page.isRomanian ? "Volum procesare" : "Processing volume"
                        value: page.volume
                        onMoved: page.volume = value
                    }
                    StudioText {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 44
                        role: Typography.mark
                        horizontalAlignment: Text.AlignRight
                        text: Math.round(page.volume * 100) + "%"
                        color: TolmiPalette.secondaryText
                    }
                }
            }
            FormRow {
                label: page.isRomanian ? "Verifica automat actualizarile" : "Check for updates automatically"
                hint: page.isRomanian ? "Actualizarile nu sunt configurate in aceasta versiune."
                                      : "Updates are not configured in this build."

                StudioSwitch {
                    label: page.isRomanian ? "Verifica automat actualizarile" : "Check for updates automatically"
                    enabled: false
                }
            }
            FormRow {
                isLast: true

                StudioButton {
                    isSmall: true
                    tone: StudioButton.Secondary
                    symbol: "speaker.wave.2.fill"
                    text: page.isRomanian ? "Previzualizeaza" : "Preview"
                }
            }
        }
    }
}

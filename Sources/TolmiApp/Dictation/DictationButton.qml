import QtQuick
import Tolmi

/// Starts and stops the dictation; what a press does is left to whoever shows it.
StudioButton {
    required property DictationControl dictation

    tone: dictation.isRecording ? StudioButton.Danger : StudioButton.Primary
    symbol: dictation.isRecording ? "" : "mic.fill"
    text: dictation.buttonTitle
    enabled: !dictation.isProcessing
}

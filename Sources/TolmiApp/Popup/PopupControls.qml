import QtQuick
import Tolmi

/// The choices of every day: two languages and the refinement.
Column {
    id: controls

    required property MenuBarPopupModel model
    required property var texts
    /// How far the lists stay away from the edges of the window.
    property int listMargin: 8

    padding: Metrics.popupPadding
    spacing: 8

    PopupControlRow {
        symbol: "character.cursor.ibeam"
        text: controls.texts.menuBarUILanguage

        StudioPicker {
            objectName: "uiLanguage"
            width: 110
            label: controls.texts.menuBarUILanguage
            options: controls.model.uiLanguageOptions
            value: controls.model.uiLanguage
            popup.margins: controls.listMargin
            onPicked: newValue => controls.model.uiLanguage = newValue
        }
    }
    PopupControlRow {
        symbol: "globe"
        text: controls.texts.menuBarTranscriptionLanguage

        StudioPicker {
            objectName: "transcriptionLanguage"
            width: 110
            label: controls.texts.menuBarTranscriptionLanguage
            options: controls.model.transcriptionLanguageOptions
            value: controls.model.transcriptionLanguage
            popup.margins: controls.listMargin
            onPicked: newValue => controls.model.transcriptionLanguage = newValue
        }
    }
    PopupControlRow {
        symbol: "sparkles"
        text: controls.texts.menuBarLLMRefine

        StudioSwitch {
            objectName: "refinement"
            label: controls.texts.menuBarLLMRefine
            checked: controls.model.refinementEnabled
            onToggled: {
                controls.model.refinementEnabled = checked;
                // A press replaces the binding by its own result.
                checked = Qt.binding(() => controls.model.refinementEnabled);
            }
        }
    }
}

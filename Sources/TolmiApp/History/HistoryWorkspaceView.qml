import QtQuick
import QtQuick.Templates as T
import Tolmi

/// Past dictations: the list on the left, the focused entry on the right.
Item {
    id: view

    required property HistoryWorkspaceModel model
    required property var texts

    // The least in which everything has its place.
    implicitWidth: 920
    implicitHeight: 620

    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: {
            searchField.forceActiveFocus(Qt.ShortcutFocusReason);
            searchField.selectAll();
        }
    }
    Shortcut {
        sequences: [StandardKey.Copy]
        onActivated: view.model.copyFocusedText()
    }
    Shortcut {
        sequences: [StandardKey.Undo]
        enabled: view.model.canUndo
        onActivated: list.undo()
    }
    StudioText {
        x: Metrics.workspacePadding
        y: 20
        role: Typography.title
        text: view.texts.routeHistory
        Accessible.role: Accessible.Heading
    }
    StudioTextField {
        id: searchField

        objectName: "search"
        x: parent.width - width - Metrics.workspacePadding
        y: 21
        width: 280
        symbol: "magnifyingglass"
        placeholderText: view.texts.historySearchPrompt
        isOnBackdrop: true
        value: view.model.searchText
        onEdited: newText => view.model.searchText = newText
        Keys.onDownPressed: list.takeKeyboard(Qt.TabFocusReason)
        Keys.onEscapePressed: {
            clear();
            view.model.searchText = "";
        }
    }
    HistoryActionBar {
        x: Metrics.workspacePadding
        y: 66
        width: parent.width - 2 * x
        height: implicitHeight
        model: view.model
        texts: view.texts
    }
    T.SplitView {
        x: Metrics.workspacePadding
        y: 122
        width: parent.width - 2 * x
        height: parent.height - y - Metrics.workspacePadding
        orientation: Qt.Horizontal
        handle: Item {
            implicitWidth: Metrics.cardGap
        }

        HistoryList {
            id: list

            objectName: "historyList"
            T.SplitView.minimumWidth: 360
            T.SplitView.preferredWidth: 420
            T.SplitView.maximumWidth: 560
            focus: true
            model: view.model
            texts: view.texts
        }
        HistoryDetail {
            T.SplitView.fillWidth: true
            model: view.model
            texts: view.texts
        }
    }
    StudioDialog {
        objectName: "clearAllDialog"
        visible: view.model.showingClearAllConfirmation
        title: view.texts.historyClearAllTitle
        message: view.texts.historyClearAllMessage
        confirmText: view.texts.historyClearAllButton
        confirmTone: StudioButton.Danger
        cancelText: view.texts.historyCancel
        onAccepted: view.model.clearAll()
        onRejected: view.model.cancelClearAll()
    }
    StudioDialog {
        objectName: "exportErrorDialog"
        visible: view.model.showingExportError
        title: view.texts.historyExportFailed
        message: view.model.exportErrorMessage
        confirmText: view.texts.commonOK
        onClosed: view.model.dismissExportError()
    }
    StudioDialog {
        objectName: "audioErrorDialog"
        visible: view.model.showingAudioError
        title: view.texts.historyAudioPlayFailedTitle
        message: view.model.audioErrorMessage
        confirmText: view.texts.commonOK
        onClosed: view.model.dismissAudioError()
    }
}

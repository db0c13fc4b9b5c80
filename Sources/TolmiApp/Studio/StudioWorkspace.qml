import QtQuick
import Tolmi

/// The place of one workspace in the Studio. It fades in when it comes and is destroyed after it has faded out.
FocusScope {
    id: workspace

    required property TolmiStudioWindowModel model
    required property var texts
    /// Name and title of the workspace, and the file of its view.
    required property string name
    required property string title
    required property url view

    function leave() {
        // The keyboard does not stay with what is going.
        enabled = false;
        fadeIn.stop();
        fadeOut.start();
    }

    anchors.fill: parent
    opacity: 0
    Component.onCompleted: fadeIn.start()
    Accessible.role: Accessible.Pane
    Accessible.name: title

    NumberAnimation {
        id: fadeIn

        target: workspace
        property: "opacity"
        to: 1
        duration: Motion.isReduced ? 0 : Motion.workspace
    }
    NumberAnimation {
        id: fadeOut

        target: workspace
        property: "opacity"
        to: 0
        duration: Motion.isReduced ? 0 : Motion.workspace
        onFinished: workspace.destroy()
    }
    ModelLoader {
        id: content

        anchors.fill: parent
        view: workspace.view
        texts: workspace.texts
        makeModel: owner => workspace.model.makeWorkspaceModel(workspace.name, owner)
    }
    StudioText {
        x: Metrics.workspacePadding
        y: Metrics.workspacePadding
        role: Typography.title
        text: workspace.title
        visible: content.status === Loader.Null
        Accessible.role: Accessible.Heading
    }
}

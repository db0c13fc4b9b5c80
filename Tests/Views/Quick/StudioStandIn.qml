import QtQuick

/// Stands in for a workspace's view.
FocusScope {
    required property QtObject model
    required property var texts

    objectName: "standIn"
    implicitWidth: 640
    implicitHeight: 460
    activeFocusOnTab: true
}

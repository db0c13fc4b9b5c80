import QtQuick
import Tolmi

/// The words of the overlay, in a window of their own because its panel is too small for them.
Window {
    id: toolTip

    property string text
    property bool isShown: false
    /// Under whose middle the words appear.
    required property Item anchorItem

    // Words of several lines are no wider than the longest of these.
    width: Math.ceil(label.contentWidth) + 22
    height: label.implicitHeight + 12
    flags: Qt.ToolTip | Qt.FramelessWindowHint | Qt.WindowDoesNotAcceptFocus | Qt.WindowTransparentForInput
    color: "transparent"

    Timer {
        interval: 600
        running: toolTip.isShown && toolTip.text !== ""
        onTriggered: {
            const middle = toolTip.anchorItem.mapToGlobal(toolTip.anchorItem.width / 2, toolTip.anchorItem.height / 2);
            toolTip.x = Math.round(middle.x - toolTip.width / 2);
            toolTip.y = Math.round(middle.y + 30);
            toolTip.visible = true;
        }
    }
    onIsShownChanged: {
        // Not "visible = false", which waits for the window of the panel when that has gone before.
        if (!isShown)
            hide();
    }

    Plate {
        anchors.fill: parent
        radius: Metrics.menuItemRadius
        material: TolmiPalette.menuMaterial
        border: TolmiPalette.chipStroke
    }
    StudioText {
        id: measure

        visible: false
        role: Typography.caption
        text: toolTip.text
    }
    StudioText {
        id: label

        x: 11
        y: 6
        width: Math.min(300, Math.ceil(measure.implicitWidth))
        role: Typography.caption
        text: toolTip.text
        wrapMode: Text.Wrap
    }
}

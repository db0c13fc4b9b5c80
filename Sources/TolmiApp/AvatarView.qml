import QtQuick
import Tolmi

/// The picture of the user, round, or a symbol in its place.
Item {
    id: avatar

    /// Address of the picture; empty shows the symbol.
    property url picture
    property string symbol: "person.crop.circle.fill"
    property real size: 20

    implicitWidth: size
    implicitHeight: size

    Symbol {
        anchors.centerIn: parent
        visible: !image.visible
        name: avatar.symbol
        size: avatar.size
        color: TolmiPalette.cloud
    }
    Image {
        id: image

        anchors.fill: parent
        visible: status === Image.Ready
        source: avatar.picture
        sourceSize: Qt.size(avatar.size * 2, avatar.size * 2)
        fillMode: Image.PreserveAspectCrop
        // The picture may change while its address stays the same.
        cache: false
        mipmap: true
    }
}

import QtQuick
import Tolmi

/// The picture of the user, round, or a symbol in its place.
Item {
    id: avatar

    /// A null picture shows the symbol.
    property alias picture: round.image
    property string symbol: "person.crop.circle.fill"
    property real size: 20

    implicitWidth: size
    implicitHeight: size

    Symbol {
        anchors.centerIn: parent
        visible: round.isEmpty
        name: avatar.symbol
        size: avatar.size
        color: TolmiPalette.cloud
    }
    RoundPicture {
        id: round

        anchors.fill: parent
        visible: !isEmpty
    }
}

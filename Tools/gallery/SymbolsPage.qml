import QtQuick
import Tolmi

/// Every symbol, large and small.
Item {
    id: page

    property var names: []

    Grid {
        x: 14
        y: 14
        columns: 9

        Repeater {
            model: page.names

            Item {
                id: cell

                required property string modelData

                width: 96
                height: 104

                Symbol {
                    x: 4
                    y: 6
                    name: cell.modelData
                    size: 48
                    color: TolmiPalette.primaryText
                }
                Symbol {
                    x: 58
                    y: 12
                    name: cell.modelData
                    size: 20
                    color: TolmiPalette.primaryText
                }
                Symbol {
                    x: 60
                    y: 40
                    name: cell.modelData
                    size: 13
                    color: TolmiPalette.primaryText
                }
                StudioText {
                    y: 60
                    width: 92
                    role: Typography.mark
                    font.pixelSize: 9
                    lineHeight: 11
                    color: TolmiPalette.tertiaryText
                    wrapMode: Text.WrapAnywhere
                    text: cell.modelData
                }
            }
        }
    }
}

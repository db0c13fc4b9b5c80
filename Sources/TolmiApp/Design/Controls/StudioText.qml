import QtQuick

/// A text in one of the roles of Typography. A single line is centred in the role's box and elided; wrapped text keeps
/// the role's line height.
Text {
    id: text

    property TextStyle role: Typography.body
    readonly property bool isWrapped: wrapMode !== Text.NoWrap

    // Whole pixels, because a fractional width would blur adjacent items.
    width: Math.ceil(implicitWidth)
    height: isWrapped ? implicitHeight : role.lineHeight
    color: TolmiPalette.primaryText
    font: role.font
    elide: isWrapped && maximumLineCount > 1000 ? Text.ElideNone : Text.ElideRight
    lineHeightMode: isWrapped ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: isWrapped ? role.lineHeight : 1
    verticalAlignment: isWrapped ? Text.AlignTop : Text.AlignVCenter
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text.text
}

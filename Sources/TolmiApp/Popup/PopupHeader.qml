import QtQuick
import Tolmi

/// The head of the popup: the program's mark and name, the user, and the state of dictation.
Item {
    id: header

    required property MenuBarPopupModel model
    required property var texts

    signal profileRequested

    implicitWidth: 320
    implicitHeight: 80

    function colorOf(shade: int): color {
        switch (shade) {
        case MenuBarPopupModel.White:
            return "white";
        case MenuBarPopupModel.Cloud:
            return TolmiPalette.cloud;
        case MenuBarPopupModel.Smoke:
            return TolmiPalette.smoke;
        default:
            return TolmiPalette.frost;
        }
    }

    Symbol {
        x: Metrics.popupPadding
        y: 16
        name: "waveform.circle.fill"
        size: 32
        color: TolmiPalette.frost
        endColor: TolmiPalette.cloud
    }
    StudioText {
        x: 56
        y: 22
        role: Typography.strong
        text: header.texts.menuBarTitle
    }
    StudioText {
        x: 56
        y: 41
        role: Typography.mark
        text: header.texts.menuBarStudioLauncher
        color: TolmiPalette.tertiaryText
    }
    ProfileChip {
        objectName: "profile"
        x: parent.width - width - Metrics.popupPadding
        y: Metrics.popupPadding
        isSmall: true
        text: header.model.profile.displayName
        picture: header.model.profile.picture
        symbol: header.model.profile.symbol
        onClicked: header.profileRequested()
    }
    StateBadge {
        objectName: "stateBadge"
        x: parent.width - width - Metrics.popupPadding
        y: Metrics.popupPadding + 30
        text: header.model.stateLabel
        dotColor: header.colorOf(header.model.badgeShade)
        isBusy: header.model.badgeIndicator === MenuBarPopupModel.Spinner
    }
}

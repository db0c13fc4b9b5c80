pragma Singleton

import QtQuick

/// Distances and radii in pixels, on a grid of 4.
QtObject {
    readonly property int sidebarWidth: 220
    readonly property int workspacePadding: 20
    readonly property int settingsPadding: 10
    readonly property int cardPadding: 16
    readonly property int cardGap: 16
    readonly property int popupPadding: 14
    readonly property int listGap: 4
    /// Between a heading and the words below it.
    readonly property int wordsGap: 4
    /// Between a symbol and the heading behind it.
    readonly property int symbolGap: 9
    readonly property int buttonGap: 10
    /// Between words and what stands beside or below them.
    readonly property int besideGap: 12
    /// Between the heading of a card and what follows.
    readonly property int headingGap: 14
    /// Between what a card says and its button.
    readonly property int actionGap: 20
    /// Widest column of panes that are read one after the other.
    readonly property int columnWidth: 840
    /// Widest column of a form.
    readonly property int formWidth: 680

    readonly property int keyCapRadius: 4
    readonly property int checkBoxRadius: 5
    readonly property int menuItemRadius: 6
    readonly property int fieldRadius: 7
    readonly property int chipRadius: 8
    readonly property int buttonRadius: 9
    readonly property int listRowRadius: 10
    readonly property int panelRadius: 12
    readonly property int dialogRadius: 14
}

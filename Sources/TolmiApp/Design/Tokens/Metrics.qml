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
    /// Between a heading and the text below it.
    readonly property int wordsGap: 4
    /// Between a symbol and the heading after it.
    readonly property int symbolGap: 9
    readonly property int buttonGap: 10
    /// Between text and items beside or below it.
    readonly property int besideGap: 12
    /// Between the heading of a card and its content.
    readonly property int headingGap: 14
    /// Between the text of a card and its button.
    readonly property int actionGap: 20
    /// Maximum width of a column of panels.
    readonly property int columnWidth: 840
    /// Maximum width of a form.
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

import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A page that scrolls where it is higher than its place, by default with the usual distance around what stands in it.
Flickable {
    id: page

    default property alias content: inside.data
    property int padding: Metrics.workspacePadding
    /// Widest that what stands in the page becomes; in a wider page it stands in the middle.
    property real widthLimit: Infinity
    readonly property Item focusedItem: Window.activeFocusItem

    contentWidth: width
    contentHeight: inside.height + 2 * padding
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: StudioScrollBar { }
    onFocusedItemChanged: {
        if (isInside(focusedItem))
            reveal(focusedItem);
    }

    function isInside(item: Item): bool {
        let ancestor = item;
        while (ancestor && ancestor !== inside)
            ancestor = ancestor.parent;
        return ancestor !== null;
    }
    /// Scrolls the minimum distance that makes the whole item visible. An item higher than the page is not moved if
    /// partly visible, so that clicking into a long text does not scroll it away.
    function reveal(item: Item) {
        const top = item.mapToItem(inside, 0, 0).y;
        const bottom = top + item.height + 2 * padding;
        const isHigher = bottom - top > height;
        if (isHigher && top < contentY + height && bottom > contentY)
            return;
        if (top < contentY)
            contentY = top;
        else if (bottom > contentY + height)
            contentY = Math.min(top, Math.min(bottom, contentHeight) - height);
    }

    /// Scrolls by so many pixels, at most to the ends.
    function scrollBy(distance: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, contentY + distance));
    }

    Item {
        id: inside

        x: Math.round((page.width - width) / 2)
        y: page.padding
        width: Math.min(page.width - 2 * page.padding, page.widthLimit)
        height: childrenRect.height
    }
}

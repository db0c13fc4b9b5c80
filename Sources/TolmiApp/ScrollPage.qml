import QtQuick
import QtQuick.Templates as T
import Tolmi

/// A page that scrolls where it is higher than its place, with the usual distance around what stands in it.
Flickable {
    id: page

    default property alias content: inside.data
    readonly property Item focusedItem: Window.activeFocusItem

    contentWidth: width
    contentHeight: inside.height + 2 * Metrics.workspacePadding
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
    /// Scrolls as little as brings the whole item into sight.
    function reveal(item: Item) {
        const top = item.mapToItem(inside, 0, 0).y;
        const bottom = top + item.height + 2 * Metrics.workspacePadding;
        if (top < contentY)
            contentY = top;
        else if (bottom > contentY + height)
            contentY = Math.min(bottom, contentHeight) - height;
    }

    Item {
        id: inside

        x: Metrics.workspacePadding
        y: Metrics.workspacePadding
        width: page.width - 2 * Metrics.workspacePadding
        height: childrenRect.height
    }
}

// A scrolling view of one column. Wheel, finger, Page Up, Page Down, Home and End scroll it, and it
// follows the keyboard focus. Dragging with the mouse does not scroll it.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

Flickable {
    id: area

    property real padding: 0
    property alias spacing: column.spacing
    default property alias content: column.data

    // The item focused by Tab; a clicked one is visible already.
    readonly property Item keyboardItem: {
        const control = Window.activeFocusItem as T.Control
        return control !== null && control.visualFocus ? control : null
    }

    function scrollTo(y) {
        Scrolling.moveTo(area, y)
    }

    // Scrolls to an item and to the items above it that belong to it, like the header of its
    // section.
    function reveal(item) {
        const top = item.mapToItem(column, 0, 0).y + padding
        if (top - 36 < contentY)
            scrollTo(top - 36)
        else if (top + item.height + padding > contentY + height)
            scrollTo(top + item.height + padding - height)
    }

    function holds(item) {
        while (item !== null && item !== column)
            item = item.parent
        return item !== null
    }

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    clip: true
    flickableDirection: Flickable.VerticalFlick
    boundsBehavior: Flickable.StopAtBounds
    interactive: LastPress.byFinger
    onContentHeightChanged: returnToBounds()
    onHeightChanged: returnToBounds()
    onKeyboardItemChanged: {
        if (keyboardItem !== null && holds(keyboardItem))
            reveal(keyboardItem)
    }

    WheelScroll {
        view: area
    }

    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_PageDown)
            scrollTo(contentY + height - 36)
        else if (event.key === Qt.Key_PageUp)
            scrollTo(contentY - height + 36)
        else if (event.key === Qt.Key_Home)
            scrollTo(0)
        else if (event.key === Qt.Key_End)
            scrollTo(contentHeight)
        else
            event.accepted = false
    }

    Column {
        id: column

        x: area.padding
        y: area.padding
        width: area.width - 2 * area.padding
    }

    T.ScrollBar.vertical: MarrowScrollBar {}
}

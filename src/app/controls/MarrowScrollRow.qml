// A scrolling view of one row. Both directions of the wheel and the finger scroll it, and it
// follows the keyboard focus; dragging with the mouse does not scroll it. It does not stop where
// only a sliver of a button is visible at its left end. The row keeps a distance from the edge for
// the focus ring.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

Flickable {
    id: area

    required property Item row
    readonly property real ringRoom: 4

    // The item focused by Tab; a clicked one is visible already.
    readonly property Item keyboardItem: {
        const control = Window.activeFocusItem as T.Control
        return control !== null && control.visualFocus ? control : null
    }
    // Where the last drag by a finger began.
    property real pulledFrom: 0
    // Shows the end once the row is laid out.
    property bool wantsEnd: false

    // To be called when something worth showing is added at the end.
    function showEnd() {
        wantsEnd = true
        buttons.layOut()
    }

    // The last position, which shows the end of the row.
    function lastStop() {
        return buttons.stopAt(Math.max(0, contentWidth - width), true)
    }

    function stopTowards(x, forward) {
        contentX = buttons.stopAt(Math.max(0, Math.min(x, lastStop())), forward)
    }

    function scrollTo(x) {
        stopTowards(x, x > contentX)
    }

    function turn(pixels, angle) {
        scrollTo(contentX - (pixels !== 0 ? pixels : angle / 2))
    }

    function holds(item) {
        while (item !== null && item !== row)
            item = item.parent
        return item !== null
    }

    function reveal(item) {
        const left = item.mapToItem(contentItem, 0, 0).x
        const right = left + item.width
        if (left - 24 < contentX)
            scrollTo(left - 24)
        else if (right + 24 > contentX + width)
            scrollTo(right + 24 - width)
        // The item is wider than the view.
        if (left - ringRoom < contentX || right + ringRoom > contentX + width)
            contentX = left - ringRoom
    }

    function followLayout() {
        const stop = lastStop()
        // A finger scrolls as far as the wheel.
        rightMargin = stop - Math.max(0, contentWidth - width)
        if (wantsEnd) {
            contentX = stop
            // Called later, once all items have their size. The linter does not know the type.
            // qmllint disable
            Qt.callLater(() => area.wantsEnd = false)
            // qmllint enable
        } else {
            scrollTo(contentX)
        }
    }

    contentWidth: row.width + 2 * ringRoom
    contentHeight: height
    clip: contentWidth > width
    flickableDirection: Flickable.HorizontalFlick
    boundsBehavior: Flickable.StopAtBounds
    interactive: LastPress.byFinger
    onContentWidthChanged: buttons.layOut()
    onWidthChanged: buttons.layOut()
    onMovementStarted: pulledFrom = contentX
    onMovementEnded: stopTowards(contentX, contentX > pulledFrom)
    onKeyboardItemChanged: {
        if (keyboardItem !== null && holds(keyboardItem))
            reveal(keyboardItem)
    }

    RowButtons {
        id: buttons

        row: area.row
        onLaidOut: area.followLayout()
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        orientation: Qt.Vertical
        onWheel: event => area.turn(event.pixelDelta.y, event.angleDelta.y)
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        orientation: Qt.Horizontal
        onWheel: event => area.turn(event.pixelDelta.x, event.angleDelta.x)
    }
}

// A row of any length behind a window of its own. It scrolls by the wheel, either way it is turned, by
// the finger, and by itself to what the keyboard comes to; the mouse does not pull it. Nowhere does it
// stop where next to nothing of a button is left at its left end. The row stands in from the edge by
// the room that the focus ring of a button takes.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

Flickable {
    id: area

    required property Item row
    readonly property real ringRoom: 4

    // Where the keyboard has come to by Tab; what was clicked is in sight already.
    readonly property Item keyboardItem: {
        const control = Window.activeFocusItem as T.Control
        return control !== null && control.visualFocus ? control : null
    }
    // Where the last pull by a finger began.
    property real pulledFrom: 0
    // The end is to be shown once the row is laid out.
    property bool wantsEnd: false

    // To be called when something has come there that is to be seen.
    function showEnd() {
        wantsEnd = true
        buttons.layOut()
    }

    // With the end of the row in sight.
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
        // So wide that nothing beside it can be seen.
        if (left - ringRoom < contentX || right + ringRoom > contentX + width)
            contentX = left - ringRoom
    }

    function followLayout() {
        const stop = lastStop()
        // A finger gets as far as the wheel.
        rightMargin = stop - Math.max(0, contentWidth - width)
        if (wantsEnd) {
            contentX = stop
            // Until all of it has found its size. The linter takes this for a value that may be anything.
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

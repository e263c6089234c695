// What waits, from top to bottom. Only the rows in sight are there, however many wait. Tab goes from
// row to row and out at the ends; arrows, Page Up, Page Down, Home and End stay inside.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Queue

ListView {
    id: list

    required property CleanupQueueState queue

    // Tab leads out: +1 behind the last row, -1 in front of the first.
    signal keyboardLeft(int steps)

    function enter(fromEnd, reason) {
        keyboardTo(fromEnd ? count - 1 : 0, reason)
    }

    function keyboardTo(index, reason) {
        currentIndex = Math.max(0, Math.min(index, count - 1))
        positionViewAtIndex(currentIndex, ListView.Contain)
        const row = currentItem as QueueRow
        if (row !== null)
            row.takeKeyboard(reason)
    }

    function goOn(index, steps, reason) {
        const next = index + steps
        if (next >= 0 && next < count)
            keyboardTo(next, reason === Qt.OtherFocusReason ? Qt.TabFocusReason : reason)
        else if (reason !== Qt.OtherFocusReason)
            keyboardLeft(steps)
    }

    // The keyboard goes on to what comes after the row, else to what comes before it.
    function remove(row) {
        const index = row.index
        const reason = row.focusReason
        const hadKeyboard = row.hasKeyboard
        queue.remove(row.node)
        if (hadKeyboard && count > 0)
            keyboardTo(index, reason)
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    // The mouse pulls nothing here; it has the wheel.
    interactive: LastPress.byFinger
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1

    Accessible.role: Accessible.List
    Accessible.name: "Queued items"

    // The names of this file reach into the component, though the linter cannot know.
    // qmllint disable unqualified
    delegate: QueueRow {
        id: row

        objectName: "queueRow"
        width: list.width
        onRemoved: list.remove(row)
        onKeyboardLeft: (steps, reason) => list.goOn(index, steps, reason)
        onHasKeyboardChanged: {
            if (hasKeyboard)
                list.currentIndex = index
        }
    }
    // qmllint enable unqualified

    Keys.onPressed: event => {
        const rowsInSight = Math.max(1, Math.floor(height / 40) - 1)
        event.accepted = true
        if (event.key === Qt.Key_PageDown)
            keyboardTo(currentIndex + rowsInSight, Qt.TabFocusReason)
        else if (event.key === Qt.Key_PageUp)
            keyboardTo(currentIndex - rowsInSight, Qt.TabFocusReason)
        else if (event.key === Qt.Key_Home)
            keyboardTo(0, Qt.TabFocusReason)
        else if (event.key === Qt.Key_End)
            keyboardTo(count - 1, Qt.TabFocusReason)
        else
            event.accepted = false
    }

    WheelScroll {
        view: list
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        objectName: "scrollBar"
        implicitWidth: 8
        rightPadding: 2
        visible: size < 1
        minimumSize: 0.08

        contentItem: Rectangle {
            implicitWidth: 6
            radius: 3
            color: Qt.rgba(1, 1, 1, bar.active || bar.pressed ? 0.3 : 0.12)
        }
    }
}

// The folders that scans leave out, from top to bottom. A long list scrolls by itself, so that only
// the rows in sight are there, however many folders are left out. Tab goes from row to row and out at
// the ends; in a long list Page Up, Page Down, Home and End stay inside.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

ListView {
    id: list

    required property SidebarState actions
    // What the list stands in, and what scrolls on where the list is at its end.
    required property MarrowScrollArea area
    readonly property real longest: 300
    readonly property bool isLong: contentHeight > longest

    // Tab leads out: +1 behind the last row, -1 in front of the first.
    signal keyboardLeft(int steps, int reason)

    function keyboardTo(index, reason) {
        currentIndex = Math.max(0, Math.min(index, count - 1))
        positionViewAtIndex(currentIndex, ListView.Contain)
        const row = currentItem as ExcludeRow
        if (row !== null)
            row.takeKeyboard(reason)
    }

    function goOn(index, steps, reason) {
        const next = index + steps
        if (next >= 0 && next < count)
            keyboardTo(next, reason)
        else
            keyboardLeft(steps, reason)
    }

    // The row goes, and the keyboard goes on to what comes after it.
    function remove(row) {
        const index = row.index
        const reason = row.focusReason
        const hadKeyboard = row.hasKeyboard
        const wasLast = index === count - 1
        if (hadKeyboard && wasLast)
            keyboardLeft(1, reason)
        actions.removeExclude(row.path)
        if (hadKeyboard && !wasLast)
            keyboardTo(index, reason)
    }

    function scrollBy(distance) {
        const y = originY + Math.max(0, Math.min(contentY + distance - originY, contentHeight - height))
        if (y !== contentY)
            contentY = y
        else
            area.scrollTo(area.contentY + distance)
    }

    height: Math.min(contentHeight, longest)
    spacing: 3
    clip: isLong
    interactive: isLong && LastPress.byFinger
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1

    Accessible.role: Accessible.List
    Accessible.name: "Excluded folders"

    // The names of this file reach into the component, though the linter cannot know.
    // qmllint disable unqualified
    delegate: ExcludeRow {
        id: row

        width: list.width - (list.isLong ? 10 : 0)
        onRemoved: list.remove(row)
        onKeyboardLeft: (steps, reason) => list.goOn(index, steps, reason)
        onHasKeyboardChanged: {
            // The current row stays, also out of sight.
            if (hasKeyboard)
                list.currentIndex = index
        }
    }
    // qmllint enable unqualified

    Keys.onPressed: event => {
        const rowsInSight = Math.max(1, Math.floor(height * count / contentHeight) - 1)
        event.accepted = isLong
        if (!isLong)
            return
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

    // At once, by half the angle: a notch of a mouse is 60 points.
    WheelHandler {
        enabled: list.isLong
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => list.scrollBy(-(event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2))
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        objectName: "excludesScrollBar"
        implicitWidth: 8
        rightPadding: 2
        visible: list.isLong
        minimumSize: 0.08

        contentItem: Rectangle {
            implicitWidth: 6
            radius: 3
            color: Qt.rgba(1, 1, 1, bar.active || bar.pressed ? 0.3 : 0.12)
        }
    }
}

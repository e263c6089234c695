// A list of MarrowListRows that can have the keyboard focus. Up, Down, Page Up, Page Down, Home and
// End move it from row to row and stop at the ends. Tab visits only the last focused row and the
// controls in it. With `tabVisitsRows` Tab visits all rows, and keyboardLeft() is emitted at the
// ends.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

MarrowScrollList {
    id: list

    property bool tabVisitsRows: false
    // False if these keys scroll a view around the list instead.
    property bool hasKeys: true

    // The focused control in a row, and its latest Qt::FocusReason.
    readonly property T.Control keyboardControl: activeFocus ? Window.activeFocusItem as T.Control : null
    property int focusReason: Qt.TabFocusReason
    // The list itself has the focus after Tab has entered it, and after the focused row has been
    // removed.
    readonly property bool awaitsRow: Window.activeFocusItem === list

    // Tab goes out: +1 behind the last row, -1 before the first.
    signal keyboardLeft(int steps, int reason)

    function keyboardTo(index, reason) {
        currentIndex = Math.max(0, Math.min(index, count - 1))
        positionViewAtIndex(currentIndex, ListView.Contain)
        const row = currentItem as MarrowListRow
        if (row !== null)
            row.takeKeyboard(reason)
    }

    // Tab enters the list from outside.
    function enter(fromEnd, reason) {
        keyboardTo(fromEnd ? count - 1 : 0, reason)
    }

    function goByTab(steps, reason) {
        const next = currentIndex + steps
        if (next >= 0 && next < count)
            keyboardTo(next, reason)
        else
            keyboardLeft(steps, reason)
    }

    // Runs `act`, which removes `row`. If the row had the focus, the row after it gets it, or else
    // the one before it.
    function takeAway(row, act) {
        const index = row.index
        const reason = row.focusReason
        const hadKeyboard = row.hasKeyboard
        act()
        if (hadKeyboard && count > 0)
            keyboardTo(index, reason)
    }

    function giveRowKeyboard() {
        if (awaitsRow && count > 0)
            keyboardTo(Math.max(0, currentIndex), focusReason)
    }

    function noteKeyboard() {
        if (keyboardControl === null)
            return
        // A row that replaces the current one gets the focus from the ListView, without a reason.
        if (keyboardControl.focusReason === Qt.OtherFocusReason)
            keyboardControl.focusReason = focusReason
        focusReason = keyboardControl.focusReason
        if (keyboardControl.visualFocus && currentIndex >= 0)
            positionViewAtIndex(currentIndex, ListView.Contain)
    }

    activeFocusOnTab: !tabVisitsRows && count > 0 && keyboardControl === null
    onActiveFocusChanged: {
        if (!activeFocus)
            focusReason = Qt.TabFocusReason
    }
    // A control has its reason only after it has the focus. The linter does not know the type.
    // qmllint disable
    onKeyboardControlChanged: Qt.callLater(noteKeyboard)
    // qmllint enable
    onAwaitsRowChanged: {
        // Called later, since the removal of a row may still be running. The linter does not know
        // the type.
        // qmllint disable
        if (awaitsRow)
            Qt.callLater(giveRowKeyboard)
        // qmllint enable
    }

    Keys.onTabPressed: event => {
        event.accepted = tabVisitsRows
        if (tabVisitsRows)
            goByTab(1, Qt.TabFocusReason)
    }
    Keys.onBacktabPressed: event => {
        event.accepted = tabVisitsRows
        if (tabVisitsRows)
            goByTab(-1, Qt.BacktabFocusReason)
    }
    Keys.onPressed: event => {
        const next = hasKeys && !(event.modifiers & ~Qt.KeypadModifier)
            ? RowKeys.rowFor(event.key, currentIndex, count, RowKeys.rowsOfPage(height, contentHeight, count)) : -1
        event.accepted = next >= 0
        if (next >= 0)
            keyboardTo(next, Qt.TabFocusReason)
    }
}

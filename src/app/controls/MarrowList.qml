// A list whose rows, each a MarrowListRow, can have the keyboard. Up, Down, Page Up, Page Down, Home and
// End go from row to row and stop at the ends. By Tab the list is one stop: the row that had the
// keyboard last, then what that row has for it, and out. With `tabVisitsRows` Tab goes from row to row
// too, and keyboardLeft() tells that it leads out.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

MarrowScrollList {
    id: list

    property bool tabVisitsRows: false
    // False where the keys of what is around the list scroll that instead.
    property bool hasKeys: true

    // What of a row has the keyboard, and by which Qt::FocusReason it got there last.
    readonly property T.Control keyboardControl: activeFocus ? Window.activeFocusItem as T.Control : null
    property int focusReason: Qt.TabFocusReason
    // The list itself has the keyboard after Tab has come in, and after the keyboard's row has gone.
    readonly property bool awaitsRow: Window.activeFocusItem === list

    // Tab leads out: +1 behind the last row, -1 in front of the first.
    signal keyboardLeft(int steps, int reason)

    function keyboardTo(index, reason) {
        currentIndex = Math.max(0, Math.min(index, count - 1))
        positionViewAtIndex(currentIndex, ListView.Contain)
        const row = currentItem as MarrowListRow
        if (row !== null)
            row.takeKeyboard(reason)
    }

    // By Tab from outside.
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

    // Does what takes `row` away. If the keyboard was on it, it goes on to the row after it, else to
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
        // A row that has become the current one in place of another has it from the ListView, without a
        // reason.
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
    // A control knows its reason only after it has the keyboard. The linter takes this for a value that
    // may be anything.
    // qmllint disable
    onKeyboardControlChanged: Qt.callLater(noteKeyboard)
    // qmllint enable
    onAwaitsRowChanged: {
        // Not in the midst of what takes a row away. The linter takes this for a value that may be
        // anything.
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

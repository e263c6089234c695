// The folders that scans leave out. A long list scrolls by itself, and only the rows near the
// visible part are built. Tab goes from row to row and out at the ends; in a long list Page Up,
// Page Down, Home and End stay in the list.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

MarrowList {
    id: list

    required property SidebarState actions
    readonly property real longest: 300
    readonly property bool isLong: contentHeight > longest

    function letIn(row) {
        if (row.hasKeyboard && row.index === count - 1)
            keyboardLeft(1, row.focusReason)
        takeAway(row, () => actions.removeExclude(row.path))
    }

    height: Math.min(contentHeight, longest)
    spacing: 3
    clip: isLong
    interactive: isLong && LastPress.byFinger
    barName: "excludesScrollBar"
    tabVisitsRows: true
    hasKeys: isLong

    Accessible.name: "Excluded folders"

    // qmllint disable unqualified
    delegate: ExcludeRow {
        id: row

        width: list.width - (list.isLong ? 10 : 0)
        onRemoved: list.letIn(row)
    }
    // qmllint enable unqualified
}

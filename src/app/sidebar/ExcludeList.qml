// The folders that scans leave out, from top to bottom. A long list scrolls by itself, so that only
// the rows in sight are there, however many folders are left out. Tab goes from row to row and out at
// the ends; in a long list Page Up, Page Down, Home and End stay inside.
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

    // The names of this file reach into the component, though the linter cannot know.
    // qmllint disable unqualified
    delegate: ExcludeRow {
        id: row

        width: list.width - (list.isLong ? 10 : 0)
        onRemoved: list.letIn(row)
    }
    // qmllint enable unqualified
}

// The history of the scanned folder: a line of its sizes, and a row for each scan.
import QtQuick
import Tessaly.Panes

ListPane {
    id: view

    required property HistoryListState history
    property int keyboardRow: -1

    title: "Disk history"
    caption: "Each completed scan of this root is a point. Compare weeks, not just the last run."
    emptyText: "Scan this folder a few times to build a history."
    model: view.history.rows

    aboveRows: Item {
        width: view.width
        height: historyLine.height + 10

        HistoryLine {
            id: historyLine

            objectName: "historyLine"
            x: 18
            width: parent.width - 36
            height: Math.min(260, Math.max(150, Math.round(view.height * 0.26)))
            history: view.history
            markedRow: view.keyboardRow
        }
    }

    // qmllint disable unqualified
    delegate: HistoryRow {
        id: row

        objectName: "historyRow"
        onHasKeyboardChanged: {
            if (row.hasKeyboard)
                view.keyboardRow = row.index
            else if (view.keyboardRow === row.index)
                view.keyboardRow = -1
        }
    }
    // qmllint enable unqualified
}

// The rows of the queue. Only those near the visible part are built. Tab goes from row to row and
// out at the ends; arrows, Page Up, Page Down, Home and End stay in the list.
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

MarrowList {
    id: list

    required property CleanupQueueState queue

    tabVisitsRows: true

    Accessible.name: "Queued items"

    // qmllint disable unqualified
    delegate: QueueRow {
        id: row

        objectName: "queueRow"
        width: list.width
        onRemoved: list.takeAway(row, () => list.queue.remove(row.node))
    }
    // qmllint enable unqualified
}

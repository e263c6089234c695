// What waits, from top to bottom. Only the rows in sight are there, however many wait. Tab goes from
// row to row and out at the ends; arrows, Page Up, Page Down, Home and End stay inside.
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

MarrowList {
    id: list

    required property CleanupQueueState queue

    tabVisitsRows: true

    Accessible.name: "Queued items"

    // The names of this file reach into the component, though the linter cannot know.
    // qmllint disable unqualified
    delegate: QueueRow {
        id: row

        objectName: "queueRow"
        width: list.width
        onRemoved: list.takeAway(row, () => list.queue.remove(row.node))
    }
    // qmllint enable unqualified
}

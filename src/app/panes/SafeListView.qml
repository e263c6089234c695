// The list of large unused files, with a score of how safe it is to remove each.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

ListPane {
    id: view

    required property SafeListState files

    title: "Safe to remove"
    caption: "Score from last used, file kind, and whether the path is a cache vs a personal folder."
    captionColor: Theme.secondary
    emptyText: "No large idle files scored yet. Scan Home first."
    model: view.files.rows

    // qmllint disable unqualified
    delegate: SafeRow {
        id: row

        objectName: "safeRow"
        onActivated: view.files.showOnMap(row.node)
        onQueued: view.files.addToQueue(row.node)
    }
    // qmllint enable unqualified
}

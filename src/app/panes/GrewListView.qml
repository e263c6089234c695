// The list of items that have grown since the previous scan of the same folder.
import QtQuick
import Tessaly.Panes

ListPane {
    id: view

    required property GrewListState growth

    title: view.growth.title
    caption: "Rescan the same root to see what got bigger. Orange tiles on the treemap are the same paths."
    emptyText: ""
    model: view.growth.rows

    // qmllint disable unqualified
    delegate: GrewRow {
        id: row

        objectName: "grewRow"
        onActivated: view.growth.showOnMap(row.path)
    }
    // qmllint enable unqualified
}

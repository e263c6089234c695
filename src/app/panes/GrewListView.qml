// What has grown since the scan of the same folder before.
import QtQuick
import Tessaly.Panes

ListPane {
    id: view

    required property GrewListState growth

    title: view.growth.title
    caption: "Rescan the same root to see what got bigger. Orange tiles on the treemap are the same paths."
    emptyText: ""
    model: view.growth.rows

    // The names of this file reach into the component, though the linter cannot know.
    // qmllint disable unqualified
    delegate: GrewRow {
        id: row

        objectName: "grewRow"
        onActivated: view.growth.showOnMap(row.path)
    }
    // qmllint enable unqualified
}

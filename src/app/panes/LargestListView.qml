// The list of the largest files of the scan.
import QtQuick
import Tessaly.Model
import Tessaly.Panes

ListPane {
    id: view

    required property LargestListState files
    required property NodeActions actions

    title: "Largest files"
    caption: "Biggest files in this scan. Click a row to show it on the treemap."
    emptyText: "Scan a folder to list large files."
    model: view.files.rows

    // qmllint disable unqualified
    delegate: LargestRow {
        id: row

        objectName: "largestRow"
        onActivated: view.files.showOnMap(row.node)
        onQueued: view.files.addToQueue(row.node)
        onMenuAsked: (place, byKeyboard) => menu.ask(row.node, row.mapToItem(view, place), byKeyboard)
    }
    // qmllint enable unqualified

    RowMenu {
        id: menu

        list: "largest"
        actions: view.actions
        onMapAsked: view.files.showOnMap(menu.node)
        onQueueAsked: view.files.addToQueue(menu.node)
    }
}

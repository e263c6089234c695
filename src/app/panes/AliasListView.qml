// The list of links whose targets do not exist.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPane {
    id: view

    required property AliasListState links
    required property NodeActions actions

    title: "Broken aliases & symlinks"
    caption: "Pointers whose target is missing. Safe to trash if you no longer need the shortcut."
    captionColor: Theme.secondary
    emptyText: "None in this scan."
    model: view.links.rows

    // qmllint disable unqualified
    delegate: AliasRow {
        id: row

        objectName: "aliasRow"
        onActivated: view.links.showOnMap(row.node)
        onQueued: view.links.addToQueue(row.node)
        onMenuAsked: (place, byKeyboard) => menu.ask(row.node, row.mapToItem(view, place), byKeyboard)
    }
    // qmllint enable unqualified

    RowMenu {
        id: menu

        list: "alias"
        actions: view.actions
        onMapAsked: view.links.showOnMap(menu.node)
        onQueueAsked: view.links.addToQueue(menu.node)
    }
}

// The list of items that are in the cloud and not on this disk. A click shows one in the file
// manager; nothing in the list queues an item or moves it to the Trash.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPane {
    id: view

    required property CloudListState items
    required property NodeActions actions

    title: Wording.cloudTitle
    caption: Wording.cloudCaption
    captionColor: Theme.secondary
    emptyText: "None in this scan."
    model: view.items.rows

    // qmllint disable unqualified
    delegate: CloudRow {
        id: row

        objectName: "cloudRow"
        onActivated: view.actions.reveal(row.node)
        onMenuAsked: (place, byKeyboard) => menu.ask(row.node, row.mapToItem(view, place), byKeyboard)
    }
    // qmllint enable unqualified

    RowMenu {
        id: menu

        list: "cloud"
        actions: view.actions
        // Such an item takes no space, so the map has no tile for it.
        offersMap: false
        offersQueue: false
    }
}

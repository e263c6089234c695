// The list of files that share blocks of the disk, in groups. It only explains: nothing in it queues
// a file or moves it to the Trash.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPane {
    id: view

    required property CloneListState clones
    required property NodeActions actions

    title: Wording.sharedBlocksTitle
    caption: Wording.sharedBlocksCaption
    captionColor: Theme.secondary
    emptyText: "No large shared groups in this scan."
    model: view.clones.rows

    // qmllint disable unqualified
    delegate: CloneRow {
        id: row

        objectName: "cloneRow"
        onActivated: view.clones.showOnMap(row.node)
        onMenuAsked: (place, byKeyboard) => menu.ask(row.node, row.mapToItem(view, place), byKeyboard)
    }
    // qmllint enable unqualified

    RowMenu {
        id: menu

        list: "clone"
        actions: view.actions
        offersQueue: false
        onMapAsked: view.clones.showOnMap(menu.node)
    }
}

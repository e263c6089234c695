// The list of files with the same content, in groups.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPane {
    id: view

    required property DuplicateListState copies
    required property NodeActions actions

    title: "Duplicate files ≥ 50 MB"
    caption: "Same size and SHA-256. Keep one copy; queue or trash the rest."
    captionColor: Theme.secondary
    emptyText: view.copies.progress !== "" ? view.copies.progress : "No large duplicates in this scan."
    model: view.copies.rows

    // While files are compared, the rows are those of the scan before.
    beside: Text {
        objectName: "comparing"
        visible: text !== ""
        width: Math.min(implicitWidth, view.width / 2)
        text: view.copies.hasRows ? view.copies.progress : ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    // qmllint disable unqualified
    delegate: DuplicateRow {
        id: row

        objectName: "duplicateRow"
        onActivated: view.copies.showOnMap(row.node)
        onRevealAsked: view.actions.reveal(row.node)
        onQueued: view.copies.addToQueue(row.node)
        onMenuAsked: (place, byKeyboard) => menu.ask(row.node, row.mapToItem(view, place), byKeyboard)
    }
    // qmllint enable unqualified

    RowMenu {
        id: menu

        list: "duplicate"
        actions: view.actions
        onMapAsked: view.copies.showOnMap(menu.node)
        onQueueAsked: view.copies.addToQueue(menu.node)
    }
}

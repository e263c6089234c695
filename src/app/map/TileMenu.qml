// The menu of one tile. It opens where it was requested.
import QtQuick
import Tessaly.Controls
import Tessaly.Map
import Tessaly.Model

MarrowMenu {
    id: menu

    required property TileMenuState tile
    required property NodeActions actions

    // The map handles these two entries itself.
    signal openAsked(node: nodeHandle)
    signal trashAsked(node: nodeHandle)

    function ask(node: nodeHandle, place: point, byKeyboard: bool) {
        menu.tile.node = node
        openAt(place.x, place.y, byKeyboard)
    }

    objectName: "tileMenu"
    name: "Tile"

    MarrowMenuItem {
        objectName: "tileOpenFolder"
        visible: menu.tile.canOpenFolder
        text: "Open folder"
        onTriggered: menu.openAsked(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileReveal"
        text: Wording.reveal
        onTriggered: menu.actions.reveal(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileOpen"
        text: "Open"
        onTriggered: menu.actions.open(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileQuickLook"
        text: "Quick Look"
        onTriggered: menu.actions.quickLook(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileCopyPath"
        text: "Copy Path"
        onTriggered: menu.actions.copyPath(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileTerminal"
        text: "Open in Terminal"
        onTriggered: menu.actions.openTerminal(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileEditor"
        text: "Open in Editor"
        onTriggered: menu.actions.openInEditor(menu.tile.node)
    }

    MarrowMenuItem {
        objectName: "tileQueue"
        text: "Add to Cleanup Queue"
        onTriggered: menu.tile.addToQueue()
    }

    MarrowMenuItem {
        objectName: "tileZip"
        enabled: menu.tile.canTrash
        text: "Zip Then Trash…"
        onTriggered: menu.tile.zipThenTrash()
    }

    MarrowMenuSeparator {
        objectName: "tileDivider"
    }

    MarrowMenuItem {
        objectName: "tileTrash"
        enabled: menu.tile.canTrash
        text: "Move to Trash"
        destructive: true
        onTriggered: menu.trashAsked(menu.tile.node)
    }
}

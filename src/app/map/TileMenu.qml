// What can be done with one tile. It pops up where it was asked for.
import QtQuick
import Tessaly.Controls
import Tessaly.Map
import Tessaly.Model

MarrowMenu {
    id: menu

    required property ScanSession session
    required property NodeActions actions

    // These two are the map's own.
    signal openAsked(node: nodeHandle)
    signal trashAsked(node: nodeHandle)

    function ask(node: nodeHandle, place: point, byKeyboard: bool) {
        state.node = node
        openAt(place.x, place.y, byKeyboard)
    }

    objectName: "tileMenu"
    name: "Tile"

    TileMenuState {
        id: state

        session: menu.session
    }

    MarrowMenuItem {
        objectName: "tileOpenFolder"
        visible: state.canOpenFolder
        text: "Open folder"
        onTriggered: menu.openAsked(state.node)
    }

    MarrowMenuItem {
        objectName: "tileReveal"
        text: Wording.reveal
        onTriggered: menu.actions.reveal(state.node)
    }

    MarrowMenuItem {
        objectName: "tileOpen"
        text: "Open"
        onTriggered: menu.actions.open(state.node)
    }

    MarrowMenuItem {
        objectName: "tileQuickLook"
        text: "Quick Look"
        onTriggered: menu.actions.quickLook(state.node)
    }

    MarrowMenuItem {
        objectName: "tileCopyPath"
        text: "Copy Path"
        onTriggered: menu.actions.copyPath(state.node)
    }

    MarrowMenuItem {
        objectName: "tileTerminal"
        text: "Open in Terminal"
        onTriggered: menu.actions.openTerminal(state.node)
    }

    MarrowMenuItem {
        objectName: "tileEditor"
        text: "Open in Editor"
        onTriggered: menu.actions.openInEditor(state.node)
    }

    MarrowMenuItem {
        objectName: "tileQueue"
        text: "Add to Cleanup Queue"
        onTriggered: state.addToQueue()
    }

    MarrowMenuItem {
        objectName: "tileZip"
        text: "Zip Then Trash…"
        onTriggered: state.zipThenTrash()
    }

    MarrowMenuSeparator {
        objectName: "tileDivider"
    }

    MarrowMenuItem {
        objectName: "tileTrash"
        text: "Move to Trash"
        destructive: true
        onTriggered: menu.trashAsked(state.node)
    }
}

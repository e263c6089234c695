// The menu of a file's row in a list. It opens where it was requested.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

MarrowMenu {
    id: menu

    required property NodeActions actions
    // Begins the object names of the menu and its entries.
    required property string list
    // Whether there is an entry for the map, and one for the queue.
    property bool offersMap: true
    property bool offersQueue: true
    // That of the row.
    property nodeHandle node

    signal mapAsked
    signal queueAsked

    function ask(node: nodeHandle, place: point, byKeyboard: bool) {
        menu.node = node
        openAt(place.x, place.y, byKeyboard)
    }

    objectName: `${list}Menu`
    name: "File"

    MarrowMenuItem {
        objectName: `${menu.list}ShowOnMap`
        visible: menu.offersMap
        text: "Show on map"
        onTriggered: menu.mapAsked()
    }

    MarrowMenuItem {
        objectName: `${menu.list}Reveal`
        text: Wording.reveal
        onTriggered: menu.actions.reveal(menu.node)
    }

    MarrowMenuItem {
        objectName: `${menu.list}QuickLook`
        text: "Quick Look"
        onTriggered: menu.actions.quickLook(menu.node)
    }

    MarrowMenuItem {
        objectName: `${menu.list}Queue`
        visible: menu.offersQueue
        text: "Add to Cleanup Queue"
        onTriggered: menu.queueAsked()
    }
}

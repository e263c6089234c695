// The menu of one of the largest files. It opens where it was requested.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

MarrowMenu {
    id: menu

    required property LargestListState files
    required property NodeActions actions
    property nodeHandle node

    function ask(node: nodeHandle, place: point, byKeyboard: bool) {
        menu.node = node
        openAt(place.x, place.y, byKeyboard)
    }

    objectName: "largestMenu"
    name: "File"

    MarrowMenuItem {
        objectName: "largestShowOnMap"
        text: "Show on map"
        onTriggered: menu.files.showOnMap(menu.node)
    }

    MarrowMenuItem {
        objectName: "largestReveal"
        text: Wording.reveal
        onTriggered: menu.actions.reveal(menu.node)
    }

    MarrowMenuItem {
        objectName: "largestQuickLook"
        text: "Quick Look"
        onTriggered: menu.actions.quickLook(menu.node)
    }

    MarrowMenuItem {
        objectName: "largestQueue"
        text: "Add to Cleanup Queue"
        onTriggered: menu.files.addToQueue(menu.node)
    }
}

// The menu of a row of the page of what can be won back. It opens where it was requested.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

MarrowMenu {
    id: menu

    required property ListWinsState wins
    property pathHandle path

    function ask(path: pathHandle, place: point, byKeyboard: bool) {
        menu.path = path
        openAt(place.x, place.y, byKeyboard)
    }

    objectName: "winMenu"
    name: "Item"

    MarrowMenuItem {
        objectName: "winShowOnMap"
        text: "Show on map"
        onTriggered: menu.wins.showOnMap(menu.path)
    }

    MarrowMenuItem {
        objectName: "winReveal"
        text: Wording.reveal
        onTriggered: menu.wins.reveal(menu.path)
    }
}

// The rows of a menu, one below the other. If they do not fit, wheel and finger scroll them;
// dragging with the mouse does not.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

FocusScope {
    id: rows

    default property alias entries: list.data
    property string name: ""
    property real minimumWidth: 0
    property real maximumWidth: Infinity

    signal chosen(row: MenuRow)
    signal closeAsked

    // Highlights no row, and scrolls to the first one.
    function reset() {
        navigation.reset()
    }

    function goToFirst() {
        navigation.goToFirst()
    }

    function widest() {
        let width = minimumWidth
        for (const child of Array.from(list.children))
            width = Math.max(width, child.implicitWidth)
        return Math.min(width, maximumWidth)
    }

    implicitWidth: widest()
    implicitHeight: list.height

    Accessible.role: Accessible.PopupMenu
    Accessible.name: name

    // Overrides the window's shortcuts for Escape.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
    Keys.onPressed: event => {
        navigation.press(event.key, event.modifiers, event.text, event.isAutoRepeat)
        // The focus stays in the menu as long as it is open.
        event.accepted = true
    }

    MenuNavigation {
        id: navigation

        column: list
        view: place
        onChosen: row => rows.chosen(row)
        onCloseAsked: rows.closeAsked()
    }

    Flickable {
        id: place

        objectName: "menuPlace"
        anchors.fill: parent
        clip: true
        contentWidth: width
        contentHeight: list.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: LastPress.byFinger

        Column {
            id: list

            objectName: "menuColumn"
            width: place.width
        }

        WheelScroll {
            view: place
        }

        T.ScrollBar.vertical: MarrowScrollBar {}
    }
}

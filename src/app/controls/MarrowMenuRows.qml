// The rows of a menu, one below the other. What does not fit scrolls by the wheel and by the finger; the
// mouse does not pull it.
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

    // No row is highlighted, and the first one is in sight.
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

    // Escape is the menu's, whatever the window does with it.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
    Keys.onPressed: event => {
        navigation.press(event.key, event.modifiers, event.text, event.isAutoRepeat)
        // The keyboard stays in the menu as long as it is open.
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

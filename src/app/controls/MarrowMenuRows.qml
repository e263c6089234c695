// The rows of a menu, one below the other, and the ways through them: arrows around and around over
// what can be chosen, Home and End, the first letter, Return and Space. What does not fit scrolls
// by the wheel and by the finger; the mouse does not pull it.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

FocusScope {
    id: rows

    default property alias entries: column.data
    property string name: ""
    property real minimumWidth: 0
    property real maximumWidth: Infinity

    signal chosen(Item row)
    signal closeAsked

    function current() {
        for (const child of Array.from(column.children)) {
            const row = child as MarrowMenuItem
            if (row !== null && row.highlighted)
                return row
        }
        return null
    }

    // None is highlighted, and the first one is in sight.
    function reset() {
        for (const child of Array.from(column.children))
            child.focus = false
        place.contentY = 0
    }

    function highlight(row: Item) {
        row.forceActiveFocus(Qt.OtherFocusReason)
        if (row.y < place.contentY)
            place.contentY = row.y
        else if (row.y + row.height > place.contentY + place.height)
            place.contentY = row.y + row.height - place.height
    }

    // The nearest row that can be chosen and passes `test`, from beside the position `from`.
    function nearest(from: int, step: int, test) {
        const all = column.children
        const count = all.length
        for (let passed = 1; passed <= count; ++passed) {
            const row = all[(from + step * passed + count * passed) % count] as MarrowMenuItem
            if (row !== null && row.visible && row.enabled && test(row))
                return row
        }
        return null
    }

    // Where the keyboard is among the rows, even where its row can no longer be chosen.
    function position() {
        for (let index = 0; index < column.children.length; ++index) {
            if (column.children[index].focus)
                return index
        }
        return -1
    }

    function go(from: int, step: int, test) {
        const row = nearest(from, step, test)
        if (row !== null)
            highlight(row)
    }

    function goToFirst() {
        go(-1, 1, () => true)
    }

    function goToLast() {
        go(column.children.length, -1, () => true)
    }

    function goBy(step: int) {
        const here = position()
        if (here < 0)
            step > 0 ? goToFirst() : goToLast()
        else
            go(here, step, () => true)
    }

    function goToLetter(letter: string) {
        const wanted = letter.toLowerCase()
        go(position(), 1, row => row.text.toLowerCase().startsWith(wanted))
    }

    function chooseCurrent() {
        const row = current()
        if (row !== null)
            chosen(row)
    }

    function adopt() {
        for (const child of Array.from(column.children)) {
            const row = child as MarrowMenuItem
            if (row === null || row.adopted)
                continue
            row.adopted = true
            row.picked.connect(() => rows.chosen(row))
            row.pointed.connect(() => row.forceActiveFocus(Qt.OtherFocusReason))
        }
    }

    function widest() {
        let width = minimumWidth
        for (const child of Array.from(column.children))
            width = Math.max(width, child.implicitWidth)
        return Math.min(width, maximumWidth)
    }

    implicitWidth: widest()
    implicitHeight: column.height

    Accessible.role: Accessible.PopupMenu
    Accessible.name: name

    // Escape is the menu's, whatever the window does with it.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
    Keys.onEscapePressed: rows.closeAsked()
    Keys.onUpPressed: rows.goBy(-1)
    Keys.onDownPressed: rows.goBy(1)
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) rows.chooseCurrent() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) rows.chooseCurrent() }
    Keys.onSpacePressed: event => { if (!event.isAutoRepeat) rows.chooseCurrent() }
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            rows.goToFirst()
        else if (event.key === Qt.Key_End)
            rows.goToLast()
        else if (event.key === Qt.Key_F10 || event.key === Qt.Key_Menu) {
            // What opens a menu puts it away too.
            if (!event.isAutoRepeat)
                rows.closeAsked()
        } else if (event.text !== "" && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier)))
            rows.goToLetter(event.text)
        // The keyboard stays in the menu as long as it is open.
        event.accepted = true
    }

    Flickable {
        id: place

        objectName: "menuPlace"
        anchors.fill: parent
        clip: true
        contentWidth: width
        contentHeight: column.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: LastPress.byFinger

        Column {
            id: column

            objectName: "menuColumn"
            width: place.width
            onChildrenChanged: rows.adopt()
        }

        WheelScroll {
            view: place
        }

        T.ScrollBar.vertical: T.ScrollBar {
            implicitWidth: 6
            visible: size < 1

            contentItem: Rectangle {
                implicitWidth: 6
                radius: 3
                color: Qt.rgba(1, 1, 1, 0.2)
            }
        }
    }
}

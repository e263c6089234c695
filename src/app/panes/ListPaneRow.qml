// A row of a ListPane. A click and Return activate it, a right click and the menu key request its
// menu. Its content is drawn over it; Tab reaches buttons in the content while the row is the
// current one.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

MarrowListRow {
    id: row

    // For assistive tools.
    required property string label
    property alias content: contentPlace.data
    // What stands above the row's own part, such as the heading of the rows from here on.
    property alias heading: headingPlace.data
    property real headingHeight: 0
    // Whether the row can be activated.
    property bool isButton: true

    signal activated
    // `place` has the row's coordinates.
    signal menuAsked(place: point, byKeyboard: bool)

    width: ListView.view !== null ? ListView.view.width : 0
    control: face

    Accessible.role: Accessible.ListItem
    Accessible.name: label

    Keys.onPressed: event => {
        event.accepted = RowKeys.asksForMenu(event.key, event.modifiers)
        if (event.accepted && !event.isAutoRepeat)
            row.menuAsked(Qt.point(contentPlace.x + 24, contentPlace.y + contentPlace.height / 2), true)
    }

    T.AbstractButton {
        id: face

        function press() {
            if (row.isButton)
                row.activated()
        }

        objectName: "rowFace"
        x: 10
        y: row.headingHeight
        width: parent.width - 20
        height: parent.height - y
        focus: true
        focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
        hoverEnabled: true
        onClicked: face.press()

        Accessible.role: Accessible.Button
        Accessible.name: row.label
        Accessible.focusable: true
        Accessible.onPressAction: face.press()

        Keys.onReturnPressed: event => { if (!event.isAutoRepeat) face.press() }
        Keys.onEnterPressed: event => { if (!event.isAutoRepeat) face.press() }
        // Only Return presses. Space is reserved for the window's preview of the row.
        Keys.onSpacePressed: event => event.accepted = true

        background: RoundedPanel {
            objectName: "rowFill"
            radius: 6
            color: Qt.alpha(Theme.ink, !row.isButton ? 0 : face.pressed ? 0.1 : face.hovered ? 0.05 : 0)
        }

        RoundedPanel {
            objectName: "focusRing"
            x: 1
            y: 1
            width: face.width - 2
            height: face.height - 2
            radius: 6
            visible: face.visualFocus
            outlineColor: Qt.alpha(Theme.accent, 0.9)
            outlineWidth: 2
        }
    }

    MouseArea {
        anchors.fill: parent
        anchors.topMargin: row.headingHeight
        acceptedButtons: Qt.RightButton
        onClicked: mouse => {
            row.takeKeyboard(Qt.MouseFocusReason)
            row.menuAsked(Qt.point(mouse.x, mouse.y + row.headingHeight), false)
        }
    }

    Item {
        id: headingPlace

        x: 18
        width: parent.width - 36
        height: row.headingHeight
    }

    Item {
        id: contentPlace

        x: 18
        y: row.headingHeight
        width: parent.width - 36
        height: parent.height - y
    }
}

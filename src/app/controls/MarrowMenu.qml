// A popup menu that stays inside the window. Its children are its rows: MarrowMenuItem,
// MarrowMenuSeparator, MarrowMenuHeading, or a Repeater of them. While it is open it has the
// keyboard focus. A press elsewhere closes it and does nothing else. After closing, the focus
// returns to its old item.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

T.Popup {
    id: menu

    default property alias entries: rows.entries
    // For assistive tools.
    property alias name: rows.name
    property alias minimumWidth: rows.minimumWidth
    // Longer texts are elided.
    property alias maximumWidth: rows.maximumWidth
    // The item that had the focus before the menu opened, and whether its focus ring was visible.
    // Still set when a row is triggered.
    property Item previousFocus: null
    property bool previousFocusShown: false
    property bool startsAtFirst: false

    // Opens with its corner at a point of its parent. The first row is highlighted only if it is
    // opened by keyboard.
    function openAt(x: real, y: real, byKeyboard: bool) {
        menu.x = x
        menu.y = y
        startsAtFirst = byKeyboard
        open()
    }

    width: rows.implicitWidth + leftPadding + rightPadding
    height: {
        const room = parent !== null && parent.Window.window !== null ? parent.Window.height - 16 : 0
        const wanted = rows.implicitHeight + topPadding + bottomPadding
        return room > 0 ? Math.min(wanted, room) : wanted
    }
    padding: 4
    margins: 8
    focus: true
    // Modal, so that the items below are not hovered either.
    modal: true
    closePolicy: T.Popup.CloseOnPressOutside
    onAboutToShow: {
        previousFocus = parent !== null ? parent.Window.activeFocusItem : null
        const control = previousFocus as T.Control
        previousFocusShown = control !== null && control.visualFocus
        rows.reset()
    }
    onOpened: {
        rows.forceActiveFocus(Qt.PopupFocusReason)
        if (startsAtFirst)
            rows.goToFirst()
    }
    // Restores the focus, unless another item has it.
    onClosed: {
        const now = parent !== null ? parent.Window.activeFocusItem : null
        if (previousFocus !== null && (now === null || now.parent === null))
            previousFocus.forceActiveFocus(previousFocusShown ? Qt.TabFocusReason : Qt.PopupFocusReason)
    }

    background: RoundedPanel {
        objectName: "menuGround"
        radius: 8
        color: Theme.bg3
        outlineColor: Theme.panelOutline
        outlineWidth: 1
        shadowColor: Theme.panelShadow
        shadowRadius: 12
        shadowOffset: 4
    }

    // qmllint disable deferred-property-id
    contentItem: MarrowMenuRows {
        id: rows
        // qmllint enable deferred-property-id

        objectName: "menuRows"
        onCloseAsked: menu.close()
        onChosen: row => {
            menu.close()
            row.triggered()
        }
    }
}

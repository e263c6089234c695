// The panel with the cleanup queue, over the window: hidden, open, or collapsed to its header.
// Nothing is removed before a button is pressed.
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

FocusScope {
    id: view

    required property CleanupQueueState queue

    // The last item outside the panel that had the keyboard focus.
    property Item keyboardOutside: null
    readonly property Item keyboardItem: Window.activeFocusItem

    function holds(item) {
        while (item !== null && item !== view)
            item = item.parent
        return item === view
    }

    // Gives the focus back to that item, or to the one before the panel if it is hidden or
    // disabled.
    function sendKeyboardAway() {
        const outside = keyboardOutside
        const next = outside !== null && outside.visible && outside.enabled
            ? outside : nextItemInFocusChain(false)
        focus = false
        if (next !== null && !holds(next))
            next.forceActiveFocus(Qt.OtherFocusReason)
    }

    width: 420
    height: view.queue.look === CleanupQueueState.Minimized ? 44 : 360
    visible: view.queue.look !== CleanupQueueState.Hidden
    onVisibleChanged: {
        if (!visible && activeFocus)
            sendKeyboardAway()
    }
    onKeyboardItemChanged: {
        if (keyboardItem !== null && !holds(keyboardItem))
            keyboardOutside = keyboardItem
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "Cleanup Queue"

    RoundedPanel {
        objectName: "surface"
        anchors.fill: parent
        radius: 12
        color: Theme.bg2
        outlineColor: Theme.queueOutline
        outlineWidth: 1
        shadowColor: Theme.queueShadow
        shadowRadius: 20
    }

    // Items below the panel get no pointer events through it.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: {}
    }

    QueueHeader {
        id: header

        objectName: "queueHeader"
        width: parent.width
        height: 44
        queue: view.queue

        Keys.onTabPressed: event => {
            if (body.visible && list.count > 0)
                list.enter(false, Qt.TabFocusReason)
            else
                event.accepted = false
        }
    }

    FocusScope {
        id: body

        y: header.height
        width: parent.width
        height: 360 - y
        visible: view.queue.look === CleanupQueueState.Open
        onVisibleChanged: {
            if (!visible && activeFocus && view.visible) {
                // The focus ring stays visible if it was visible.
                const button = view.keyboardItem as MarrowButton
                const isSeen = button !== null && button.visualFocus
                header.forceActiveFocus(isSeen ? Qt.TabFocusReason : Qt.OtherFocusReason)
            }
        }

        Rectangle {
            objectName: "divider"
            x: 1
            width: parent.width - 2
            height: 1
            color: Theme.separator
        }

        QueueList {
            id: list

            objectName: "queueList"
            x: 1
            y: 1
            width: parent.width - 2
            height: footer.y - y
            queue: view.queue
            model: view.queue.rows
            onKeyboardLeft: steps => {
                if (steps > 0)
                    footer.takeKeyboard(Qt.TabFocusReason)
                else
                    header.forceActiveFocus(Qt.BacktabFocusReason)
            }
        }

        QueueFooter {
            id: footer

            objectName: "queueFooter"
            y: parent.height - height
            width: parent.width
            queue: view.queue
            onKeyboardLeft: {
                if (list.count > 0)
                    list.enter(true, Qt.BacktabFocusReason)
                else
                    header.forceActiveFocus(Qt.BacktabFocusReason)
            }
        }
    }
}

// What lies over others and, while it is modal, takes the pointer and the keyboard from them: Tab
// stays inside, no key gets through, and the keyboard goes back to where it was once this is gone. The
// first control inside has it first.
import QtQuick

FocusScope {
    id: shield

    property bool shown: true
    property bool isModal: true
    default property alias content: place.data

    // The user has clicked where nothing of the content is.
    signal clickedBeside

    // What had the keyboard before.
    property Item previousFocus: null
    property bool hasKeyboard: false

    // Goes in from one of the two ends.
    function enter(end, forward, reason) {
        const next = end.nextItemInFocusChain(forward)
        if (next !== null && next !== first && next !== last)
            next.forceActiveFocus(reason)
    }

    function takeKeyboard() {
        if (!visible || !isModal || hasKeyboard)
            return
        hasKeyboard = true
        previousFocus = Window.activeFocusItem
        forceActiveFocus(Qt.PopupFocusReason)
        enter(first, true, Qt.PopupFocusReason)
    }

    function giveKeyboardBack() {
        focus = false
        if (!hasKeyboard)
            return
        hasKeyboard = false
        if (previousFocus !== null && previousFocus.visible)
            previousFocus.forceActiveFocus(Qt.PopupFocusReason)
        previousFocus = null
    }

    visible: shown
    onVisibleChanged: visible ? takeKeyboard() : giveKeyboardBack()
    Component.onCompleted: takeKeyboard()
    Component.onDestruction: giveKeyboardBack()
    // Made before its window, it finds no control to begin with until it is in there.
    onActiveFocusChanged: {
        if (hasKeyboard && Window.activeFocusItem === shield)
            enter(first, true, Qt.PopupFocusReason)
    }

    Keys.onPressed: event => event.accepted = shield.isModal

    MouseArea {
        anchors.fill: parent
        enabled: shield.isModal
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: shield.clickedBeside()
        onWheel: {}
    }

    // Tab comes to the ends of the row only from inside, and goes on at the other end.
    Item {
        id: first

        activeFocusOnTab: shield.isModal
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (activeFocus)
                shield.enter(last, false, Qt.BacktabFocusReason)
        }
    }

    Item {
        id: place

        anchors.fill: parent
    }

    Item {
        id: last

        activeFocusOnTab: shield.isModal
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (activeFocus)
                shield.enter(first, true, Qt.TabFocusReason)
        }
    }
}

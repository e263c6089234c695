// The layer of everything that lies over others. While it is modal it dims them and takes the pointer
// and the keyboard from them: Tab stays inside, no key gets through, and the keyboard goes back to where
// it was once this is gone.
import QtQuick
import QtQuick.Templates as T

FocusScope {
    id: shield

    property bool shown: true
    property bool isModal: true
    // Something else that is modal lies over this: the keyboard is to be had only once that has gone.
    property bool covered: false
    // Lies over what is below.
    property color dimColor: "transparent"
    // The control that has the keyboard first; the first one inside if this is null.
    property Item firstControl: null
    default property alias content: place.data

    // Escape was pressed, or a click was beside the content.
    signal dismissed

    // What had the keyboard before, and whether it showed so.
    property Item previousFocus: null
    property bool previousFocusShown: false
    // Who has come here by the keyboard sees where it is, and where it is afterwards.
    readonly property int reason: previousFocusShown ? Qt.TabFocusReason : Qt.PopupFocusReason
    property bool hasKeyboard: false
    readonly property bool isInFront: Window.active

    // Goes in from one of the two ends.
    function enter(end, forward, reason) {
        const next = end.nextItemInFocusChain(forward)
        if (next !== null && next !== first && next !== last)
            next.forceActiveFocus(reason)
    }

    function takeKeyboard() {
        if (!visible || !isModal || covered || hasKeyboard)
            return
        // Of a window that is not in front it cannot be told who will have the keyboard again.
        if (Window.window !== null && !isInFront && Window.activeFocusItem === null)
            return
        hasKeyboard = true
        // The click that has brought the window forward has put the keyboard in here already, and
        // would not count as one if it was taken away in its midst.
        if (activeFocus && Window.activeFocusItem !== shield)
            return
        previousFocus = Window.activeFocusItem
        const control = previousFocus as T.Control
        previousFocusShown = control !== null && control.visualFocus
        forceActiveFocus(reason)
        enterByDefault()
    }

    function enterByDefault() {
        if (firstControl !== null)
            firstControl.forceActiveFocus(reason)
        else
            enter(first, true, reason)
    }

    // From the control that has the keyboard to the one after or before it, as Tab does.
    function step(forward: bool) {
        const here = activeFocus ? Window.activeFocusItem : null
        const next = here !== null ? here.nextItemInFocusChain(forward) : null
        if (next !== null)
            next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }

    // Tab has come to it from outside.
    function enterByTab() {
        enter(first, true, Qt.TabFocusReason)
    }

    function giveKeyboardBack() {
        // Who has taken it meanwhile keeps it.
        const isTaken = Window.activeFocusItem !== null && !activeFocus
        focus = false
        if (!hasKeyboard)
            return
        hasKeyboard = false
        if (!isTaken && previousFocus !== null && previousFocus.visible)
            previousFocus.forceActiveFocus(reason)
        previousFocus = null
    }

    visible: shown
    // Later, since what covered it gives the keyboard back first, and so does the window. The linter
    // takes that for a value that may be anything.
    // qmllint disable
    onCoveredChanged: Qt.callLater(takeKeyboard)
    onIsInFrontChanged: Qt.callLater(takeKeyboard)
    // qmllint enable
    onVisibleChanged: visible ? takeKeyboard() : giveKeyboardBack()
    Component.onCompleted: takeKeyboard()
    Component.onDestruction: giveKeyboardBack()
    // Made before its window, it finds no control to begin with until it is in there.
    onActiveFocusChanged: {
        if (hasKeyboard && Window.activeFocusItem === shield)
            enterByDefault()
    }

    Keys.onEscapePressed: shield.dismissed()
    Keys.onPressed: event => event.accepted = shield.isModal

    Rectangle {
        objectName: "dim"
        anchors.fill: parent
        visible: shield.isModal && shield.dimColor.a > 0
        color: shield.dimColor
    }

    MouseArea {
        anchors.fill: parent
        enabled: shield.isModal
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: shield.dismissed()
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

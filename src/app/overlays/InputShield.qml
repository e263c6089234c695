// The base of all layers over other items. A modal one dims the items below and blocks their input:
// Tab stays inside, no key passes through, and the focus returns to its old item when the layer is
// hidden.
import QtQuick
import QtQuick.Templates as T

FocusScope {
    id: shield

    property bool shown: true
    property bool isModal: true
    // Another modal layer covers this one, which takes the focus only after that one is hidden.
    property bool covered: false
    // The colour over the items below.
    property color dimColor: "transparent"
    // The control that gets the focus first; the first one inside if this is null.
    property Item firstControl: null
    default property alias content: place.data

    // Escape was pressed, or a point beside the content clicked.
    signal dismissed

    // The item that had the focus before, and whether its focus ring was visible.
    property Item previousFocus: null
    property bool previousFocusShown: false
    // A focus ring is visible in the layer, and again afterwards, only if one was visible before.
    readonly property int reason: previousFocusShown ? Qt.TabFocusReason : Qt.PopupFocusReason
    property bool hasKeyboard: false
    readonly property bool isInFront: Window.active

    // Moves the focus to the control next to `end`, the first or the last item.
    function enter(end, forward, reason) {
        const next = end.nextItemInFocusChain(forward)
        if (next !== null && next !== first && next !== last)
            next.forceActiveFocus(reason)
    }

    function takeKeyboard() {
        if (!visible || !isModal || covered || hasKeyboard)
            return
        // While the window is not active, the item that will have the focus is unknown.
        if (Window.window !== null && !isInFront && Window.activeFocusItem === null)
            return
        hasKeyboard = true
        // The click that activated the window has already focused a control of this layer. Moving
        // the focus would cancel that click.
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

    // Moves the focus to the next or previous control, like Tab.
    function step(forward: bool) {
        const here = activeFocus ? Window.activeFocusItem : null
        const next = here !== null ? here.nextItemInFocusChain(forward) : null
        if (next !== null)
            next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }

    // Tab has entered the layer from outside.
    function enterByTab() {
        enter(first, true, Qt.TabFocusReason)
    }

    function giveKeyboardBack() {
        // If another item has taken the focus meanwhile, it keeps it.
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
    // Called later, since the covering layer and the window restore their focus first. The linter
    // does not know the type.
    // qmllint disable
    onCoveredChanged: Qt.callLater(takeKeyboard)
    onIsInFrontChanged: Qt.callLater(takeKeyboard)
    // qmllint enable
    onVisibleChanged: visible ? takeKeyboard() : giveKeyboardBack()
    Component.onCompleted: takeKeyboard()
    Component.onDestruction: giveKeyboardBack()
    // A layer that was created before its window finds its first control only now.
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

    // Tab reaches these two items only from inside, and continues at the other end.
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

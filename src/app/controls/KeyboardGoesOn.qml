// Sends the keyboard on to what comes next, when the control that has it is of no use any more: gone
// out of sight, or disabled. Where the pointer has put it there, nothing shows it, and it goes nowhere.
import QtQuick
import QtQuick.Templates as T

Connections {
    id: way

    required property T.Control control
    property bool wasShown: false

    // Not in the midst of what takes the keyboard away.
    function goOnSoon() {
        // The linter takes it for a value that may be anything.
        // qmllint disable
        Qt.callLater(goOn)
        // qmllint enable
    }

    function goOn() {
        const now = control.Window.activeFocusItem
        const isTaken = now !== null && now.parent !== null && now !== control
        if (!isTaken && !(control.visible && control.enabled))
            control.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
    }

    target: control

    function onVisibleChanged() {
        if (control.visible || !control.activeFocus)
            return
        if (control.visualFocus)
            goOnSoon()
        else
            control.focus = false
    }

    function onVisualFocusChanged() {
        if (control.visualFocus)
            wasShown = true
        else if (control.activeFocus)
            wasShown = false
    }

    // A control that is disabled has lost the keyboard already.
    function onActiveFocusChanged() {
        if (control.activeFocus)
            return
        if (wasShown && !control.enabled)
            goOnSoon()
        wasShown = false
    }
}

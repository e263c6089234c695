// Moves the keyboard focus to the next control when the one that has it is hidden or disabled. If
// the pointer has set the focus, no ring shows it, and it is not moved.
import QtQuick
import QtQuick.Templates as T

Connections {
    id: way

    required property T.Control control
    property bool wasShown: false

    // Not while the focus is still changing.
    function goOnSoon() {
        // The linter does not know the type.
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

    // A disabled control has lost the focus already.
    function onActiveFocusChanged() {
        if (control.activeFocus)
            return
        if (wasShown && !control.enabled)
            goOnSoon()
        wasShown = false
    }
}

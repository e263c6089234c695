// A pill of the row above the map. If it is hidden while it has the focus, the control before it
// gets the focus.
import Tessaly.Controls

MarrowPill {
    tint: Theme.accent
    opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
    onVisibleChanged: {
        if (visible || !activeFocus)
            return
        const reason = focusReason
        const next = nextItemInFocusChain(false)
        if (next !== null)
            next.forceActiveFocus(reason)
    }
}

// A pill of the row above the map. Where it goes while it has the keyboard, what comes before it gets
// that.
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

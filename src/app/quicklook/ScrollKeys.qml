// The keys that scroll a view. A Flickable has it in Keys.forwardTo.
import QtQuick
import Tessaly.Controls

Item {
    id: keys

    required property Flickable target

    signal used

    function moveTo(y) {
        used()
        Scrolling.moveTo(target, y)
    }

    // A strip at the edge stays visible.
    readonly property real page: Math.max(40, target.height - 40)

    Keys.onUpPressed: moveTo(target.contentY - 40)
    Keys.onDownPressed: moveTo(target.contentY + 40)
    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_PageUp:
            moveTo(target.contentY - page)
            break
        case Qt.Key_PageDown:
            moveTo(target.contentY + page)
            break
        case Qt.Key_Home:
            used();
            (target as ListView)?.positionViewAtBeginning()
            break
        case Qt.Key_End:
            // The list only estimates the height of rows that were never visible, so it finds the
            // end itself.
            used();
            (target as ListView)?.positionViewAtEnd()
            break
        default:
            return
        }
        event.accepted = true
    }
}

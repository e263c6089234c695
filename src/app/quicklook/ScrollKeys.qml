// The keys that move through what is longer than its view. A Flickable names it in Keys.forwardTo.
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

    // What was in sight at the edge stays in sight.
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
            // The height of rows that were never in sight is a guess, so the end is the list's to find.
            used();
            (target as ListView)?.positionViewAtEnd()
            break
        default:
            return
        }
        event.accepted = true
    }
}

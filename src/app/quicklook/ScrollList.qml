// A list for reading, scrolled by wheel, finger, keys and bar. No row can be chosen.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

MarrowScrollList {
    id: list

    required property PreviewState preview
    // The user has not scrolled yet. Rows that are larger than estimated then do not move the
    // beginning out of view.
    property bool untouched: true

    function stayAtTheBeginning() {
        if (untouched)
            contentY = originY
    }

    onOriginYChanged: stayAtTheBeginning()
    onContentHeightChanged: stayAtTheBeginning()
    onHeightChanged: stayAtTheBeginning()
    onMovementStarted: untouched = false
    onScrolled: untouched = false

    activeFocusOnTab: true
    Keys.forwardTo: [keys]

    Accessible.focusable: true

    ScrollKeys {
        id: keys

        target: list
        onUsed: list.untouched = false
    }

    Connections {
        target: list.preview

        function onChanged() {
            list.untouched = true
            list.stayAtTheBeginning()
        }
    }
}
